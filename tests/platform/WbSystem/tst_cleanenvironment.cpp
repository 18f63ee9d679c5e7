// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/CleanEnvironment.h>

#include <QtTest>

class CleanEnvironmentTest : public QObject
{
    Q_OBJECT

private slots:
    void whatWouldChangePythonIsRemoved_data();
    void whatWouldChangePythonIsRemoved();
    void whatIsTheUsersOwnIsKept_data();
    void whatIsTheUsersOwnIsKept();
    void theCaseOfANameCountsAsTheSystemHasIt();
    void textsAreUtf8();
    void theProgramsOwnEnvironmentStaysAsItIs();
};

void CleanEnvironmentTest::whatWouldChangePythonIsRemoved_data()
{
    QTest::addColumn<QByteArray>("name");

    QTest::newRow("modules of the user") << QByteArray("PYTHONPATH");
    QTest::newRow("another Python for the launcher") << QByteArray("PY_PYTHON3");
    QTest::newRow("an environment of the user's shell") << QByteArray("VIRTUAL_ENV");
    QTest::newRow("the words before its prompt") << QByteArray("VIRTUAL_ENV_PROMPT");
    QTest::newRow("an index of packages") << QByteArray("PIP_INDEX_URL");
    QTest::newRow("libraries that the linker loads first") << QByteArray("LD_PRELOAD");
    QTest::newRow("switches of this program's browser") << QByteArray("QTWEBENGINE_CHROMIUM_FLAGS");
}

void CleanEnvironmentTest::whatWouldChangePythonIsRemoved()
{
    QFETCH(QByteArray, name);
    qputenv(name.constData(), "given");

    const QProcessEnvironment environment = CleanEnvironment();

    qunsetenv(name.constData());
    QVERIFY(!environment.contains(QString::fromLatin1(name)));
}

void CleanEnvironmentTest::whatIsTheUsersOwnIsKept_data()
{
    QTest::addColumn<QByteArray>("name");

    QTest::newRow("the way to the network") << QByteArray("HTTPS_PROXY");
    QTest::newRow("a variable that a program reads") << QByteArray("RPA_KEPT");
    QTest::newRow("a name that only holds the word") << QByteArray("MY_PYTHON");
}

void CleanEnvironmentTest::whatIsTheUsersOwnIsKept()
{
    QFETCH(QByteArray, name);
    qputenv(name.constData(), "given");

    const QProcessEnvironment environment = CleanEnvironment();

    qunsetenv(name.constData());
    QCOMPARE(environment.value(QString::fromLatin1(name)), QStringLiteral("given"));
}

void CleanEnvironmentTest::theCaseOfANameCountsAsTheSystemHasIt()
{
#ifdef Q_OS_WIN
    const bool isKept = false;
#else
    const bool isKept = true;
#endif
    qputenv("Pip_Index_Url", "given");

    const QProcessEnvironment environment = CleanEnvironment();

    qunsetenv("Pip_Index_Url");
    QCOMPARE(environment.contains(QStringLiteral("Pip_Index_Url")), isKept);
}

void CleanEnvironmentTest::textsAreUtf8()
{
    const QByteArray own = qgetenv("LC_ALL");
    qputenv("LC_ALL", "de_DE");

    const QProcessEnvironment environment = CleanEnvironment();

    qputenv("LC_ALL", own);
    QCOMPARE(environment.value(QStringLiteral("LC_ALL")), QStringLiteral("C.UTF-8"));
}

void CleanEnvironmentTest::theProgramsOwnEnvironmentStaysAsItIs()
{
    qputenv("PIP_INDEX_URL", "given");

    CleanEnvironment();

    QCOMPARE(qgetenv("PIP_INDEX_URL"), QByteArray("given"));
    qunsetenv("PIP_INDEX_URL");
}

QTEST_GUILESS_MAIN(CleanEnvironmentTest)
#include "tst_cleanenvironment.moc"
