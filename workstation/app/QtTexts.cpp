#include "QtTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

void QtTexts::Install()
{
    auto* texts = new QTranslator(qApp);
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/translations");
    for (const QString& folder : {beside, QLibraryInfo::location(QLibraryInfo::TranslationsPath)}) {
        if (texts->load(QStringLiteral("qtbase_zh_CN"), folder)) {
            QCoreApplication::installTranslator(texts);
            return;
        }
    }
}
