// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QColor>
#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

// The dialogs of the system, and the only place that opens them. Each is modal, stands over the window of its
// owner and goes away together with the owner. GUI thread only.
//
// Nothing is given when the user cancelled, and nothing when the owner went away while the dialog was open:
// whoever asked must not be touched any more then.
//
//     const QString path = WbSystemDialogs::OpenFile(this, QStringLiteral("选择文件"));
//     if (path.isEmpty())
//         return; // perhaps there is no "this" left
class WBBASEUI_EXPORT WbSystemDialogs
{
public:
    // An existing file. place: the folder or the file to start from; empty: where the last one was found.
    // filter: as QFileDialog takes it; empty: all files.
    static QString OpenFile(QWidget* owner, const QString& title, const QString& place = QString(),
                            const QString& filter = QString());

    // One or several existing files.
    static QStringList OpenFiles(QWidget* owner, const QString& title, const QString& filter = QString());

    // A file to be written; place may name it. asksBeforeReplacing: whether the user has to agree to a file
    // that exists.
    static QString SaveFile(QWidget* owner, const QString& title, const QString& place = QString(),
                            const QString& filter = QString(), bool asksBeforeReplacing = true);

    // An existing folder.
    static QString OpenFolder(QWidget* owner, const QString& title, const QString& place = QString());

    // Not valid when nothing was chosen.
    static QColor Color(QWidget* owner, const QString& title, const QColor& current);

    // A whole number from least to most.
    static std::optional<int> Number(QWidget* owner, const QString& title, const QString& label, int current,
                                     int least, int most);
};
