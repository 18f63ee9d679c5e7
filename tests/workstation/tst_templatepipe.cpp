// A pipe among the templates, where the system has such files.
#include "TemplateKeeper.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

class tst_TemplatePipe : public QObject
{
    Q_OBJECT

private slots:
    void leavesOutAPipeWithoutWaitingForAWriter();
};

// Whoever opened one to read it would wait until somebody opens it to write.
void tst_TemplatePipe::leavesOutAPipeWithoutWaitingForAWriter()
{
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("visual"));
    QVERIFY(QDir().mkpath(folder));
    TemplateKeeper keeper({folder}, home.filePath(QStringLiteral("data")));
    QSignalSpy looked(&keeper, &TemplateKeeper::SigLooked);
    QSignalSpy unreadable(&keeper, &TemplateKeeper::SigUnreadable);
    QFile file(folder + QStringLiteral("/a.rpat"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("a"), qint64(1));
    file.close();
    QCOMPARE(::mkfifo(QFile::encodeName(folder + QStringLiteral("/b.rpat")).constData(), 0600), 0);

    const QString fit = keeper.GetFitFolder(folder);
    keeper.Look();

    QCOMPARE(QDir(fit).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System),
             QStringList{QStringLiteral("a.rpat")});
    QTRY_COMPARE(looked.size(), 1);
    QCOMPARE(unreadable.size(), 0);
    QCOMPARE(QDir(keeper.GetKeptFolder()).entryList(QDir::Files).size(), 1);
}

QTEST_GUILESS_MAIN(tst_TemplatePipe)
#include "tst_templatepipe.moc"
