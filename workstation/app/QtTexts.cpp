// SPDX-License-Identifier: Apache-2.0

#include "QtTexts.h"

#include <QCoreApplication>
#include <QHash>
#include <QLibraryInfo>
#include <QTranslator>

#include <cstring>

namespace
{
// Keys are called by what is printed on Chinese keyboards; Qt's own texts mix words and English.
class KeyNames : public QTranslator
{
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* text, const char*, int) const override
    {
        static const QHash<QByteArray, QString> names{{"Up", QStringLiteral("↑")},
                                                      {"Down", QStringLiteral("↓")},
                                                      {"Left", QStringLiteral("←")},
                                                      {"Right", QStringLiteral("→")},
                                                      {"PgUp", QStringLiteral("PageUp")},
                                                      {"PgDown", QStringLiteral("PageDown")},
                                                      {"Del", QStringLiteral("Delete")},
                                                      {"Ins", QStringLiteral("Insert")},
                                                      {"Return", QStringLiteral("回车")},
                                                      {"Enter", QStringLiteral("回车")},
                                                      {"Space", QStringLiteral("空格")},
                                                      {"Backspace", QStringLiteral("退格")},
                                                      {"Home", QStringLiteral("Home")},
                                                      {"End", QStringLiteral("End")},
                                                      {"Ctrl", QStringLiteral("Ctrl")},
                                                      {"Alt", QStringLiteral("Alt")},
                                                      {"Shift", QStringLiteral("Shift")},
                                                      {"Tab", QStringLiteral("Tab")},
                                                      {"Backtab", QStringLiteral("Shift+Tab")},
                                                      {"Esc", QStringLiteral("Esc")}};
        return std::strcmp(context, "QShortcut") == 0 ? names.value(text) : QString();
    }
};
} // namespace

void QtTexts::Install()
{
    auto* texts = new QTranslator(qApp);
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/translations");
    for (const QString& folder : {beside, QLibraryInfo::location(QLibraryInfo::TranslationsPath)}) {
        if (texts->load(QStringLiteral("qtbase_zh_CN"), folder)) {
            QCoreApplication::installTranslator(texts);
            break;
        }
    }
    QCoreApplication::installTranslator(new KeyNames(qApp)); // the last one is asked first
}
