// SPDX-License-Identifier: Apache-2.0

#include "SystemPython_p.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QtTest>

// Where Windows' Pythons are looked for; each folder holds a file that only bears the name.
class SystemPythonTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<TestFolder>();
        path = qgetenv("PATH");
    }
    void cleanup() { qputenv("PATH", path); }

    void theBundledOneGoesFirst()
    {
        const QString bundled = Make(QStringLiteral("program/python/python.exe"));
        Search({Make(QStringLiteral("other/py.exe"))});

        QCOMPARE(SystemPython(folder->filePath(QStringLiteral("program"))),
                 QDir::toNativeSeparators(bundled));
    }

    void theLauncherGoesBeforeThePlainOne()
    {
        const QString plain = Make(QStringLiteral("first/python.exe"));
        const QString launcher = Make(QStringLiteral("second/py.exe"));
        Search({plain, launcher});

        QCOMPARE(Found(), launcher.toLower());
    }

    void thePlainOneIsTakenWhereThereIsNoLauncher()
    {
        const QString plain = Make(QStringLiteral("first/python.exe"));
        Search({plain});

        QCOMPARE(Found(), plain.toLower());
    }

    void thePlaceholderOfTheShopIsNoPython()
    {
        Search({Make(QStringLiteral("Microsoft/WindowsApps/python.exe"))});

        QCOMPARE(Found(), QString());
    }

    void noneIsNotMadeUp()
    {
        Search({});

        QCOMPARE(Found(), QString());
    }

private:
    QString Make(const QString& name)
    {
        const QFileInfo info(folder->filePath(name));
        QDir().mkpath(info.path());
        QFile file(info.filePath());
        return file.open(QIODevice::WriteOnly) ? info.filePath() : QString();
    }

    void Search(const QStringList& files)
    {
        QStringList folders{folder->filePath(QStringLiteral("empty"))};
        for (const QString& file : files)
            folders << QFileInfo(file).path();
        qputenv("PATH", folders.join(QLatin1Char(';')).toLocal8Bit());
    }

    QString Found() const
    {
        return QDir::fromNativeSeparators(SystemPython(folder->filePath(QStringLiteral("nothing"))))
            .toLower();
    }

    std::unique_ptr<TestFolder> folder;
    QByteArray path;
};

QTEST_GUILESS_MAIN(SystemPythonTest)
#include "tst_systempython_windows.moc"
