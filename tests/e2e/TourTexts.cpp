// SPDX-License-Identifier: Apache-2.0

#include "TourTexts.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSet>
#include <QTabBar>
#include <QTextDocumentFragment>
#include <QTextEdit>

namespace
{
// Names of things and of keys, as they stand on the keyboard and in every Chinese manual.
const QSet<QString>& KnownWords()
{
    static const QStringList words =
        QStringLiteral("RPA Python Excel CSV JSON HTTP HTTPS http https URL HTML CSS XPath Web MB GB KB ID "
                       "Ctrl Alt Shift Esc Enter Tab Home End Delete PageUp PageDown Insert fx Linux Windows "
                       // examples of what one types
                       "count openpyxl whl rpa example com KQ XW HT")
            .split(QLatin1Char(' '));
    static const QSet<QString> known(words.begin(), words.end());
    return known;
}

QString Plain(const QString& text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

bool HoldsUsersText(const QWidget& widget)
{
    return qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QTextEdit*>(&widget) ||
           qobject_cast<const QPlainTextEdit*>(&widget);
}

// Names of libraries, files and codes are what they are, and code is Python.
bool HoldsNames(const QWidget& widget)
{
    const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
    return widget.objectName() == QLatin1String("labelCode") ||
           qobject_cast<const QPlainTextEdit*>(&widget) ||
           (view && qobject_cast<const QFileSystemModel*>(view->model()));
}
} // namespace

void TourTexts::Note(const QString& step)
{
    for (const QWidget* widget : QApplication::allWidgets())
        if (widget->isVisible() && !HoldsNames(*widget))
            NoteWidget(*widget, step);
}

void TourTexts::NoteWidget(const QWidget& widget, const QString& step)
{
    const QString place = step + QStringLiteral(" / ") +
                          (widget.objectName().isEmpty() ? QLatin1String(widget.metaObject()->className())
                                                         : widget.objectName());
    Add(widget.toolTip(), place);
    Add(widget.property("placeholderText").toString(), place);
    Add(widget.property("title").toString(), place);
    if (widget.isWindow())
        Add(widget.windowTitle(), place);
    if (!HoldsUsersText(widget))
        Add(widget.property("text").toString(), place);
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            Add(tabs->tabText(i), place);
            Add(tabs->tabToolTip(i), place);
        }
    }
    if (const auto* menu = qobject_cast<const QMenu*>(&widget))
        for (const QAction* action : menu->actions())
            Add(action->text(), place);
    const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
    if (!view || !view->model())
        return;
    // Rows in sight, from top to bottom.
    for (int y = 0; y < view->viewport()->height(); y += 8) {
        for (int x = 0; x < view->viewport()->width(); x += 40) {
            const QModelIndex index = view->indexAt({x, y});
            Add(index.data(Qt::DisplayRole).toString(), place);
            Add(index.data(Qt::ToolTipRole).toString(), place);
        }
    }
}

void TourTexts::Add(const QString& text, const QString& place)
{
    const QString plain = Plain(text).trimmed();
    if (!plain.isEmpty() && !places.contains(plain))
        places.insert(plain, place);
}

// Latin words, and those that only programmers use.
QStringList TourTexts::FindForeign() const
{
    static const QRegularExpression word(
        QStringLiteral("[A-Za-z][A-Za-z']+|线程|堆栈|指针|句柄|序列化|进程号|断言|回调|字节码"));
    QStringList foreign;
    for (auto it = places.cbegin(); it != places.cend(); ++it) {
        auto words = word.globalMatch(it.key());
        while (words.hasNext()) {
            const QString found = words.next().captured();
            if (!KnownWords().contains(found) && !typed.contains(found)) {
                foreign << QStringLiteral("%1 (%2)").arg(it.key(), it.value());
                break;
            }
        }
    }
    return foreign;
}
