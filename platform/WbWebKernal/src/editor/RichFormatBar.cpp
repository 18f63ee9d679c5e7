// SPDX-License-Identifier: Apache-2.0

#include "RichFormatBar_p.h"
#include "RichFormats_p.h"
#include "RichLinkDialog_p.h"
#include "RichTableActions_p.h"
#include "RichTextView_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QComboBox>
#include <QMenu>
#include <QPointer>
#include <QTextBlock>
#include <QTextList>
#include <QToolButton>

namespace
{
struct NamedColour
{
    const char* name;
    QRgb value;
};

// Middle tones: readable on a light and on a dark page.
constexpr NamedColour textColours[] = {
    {"红色", 0xffe5484d}, {"橙色", 0xffe8730c}, {"黄色", 0xffb88a00}, {"绿色", 0xff2f9e58},
    {"青色", 0xff0f96a8}, {"蓝色", 0xff3b82f6}, {"紫色", 0xff8e5cf0}, {"灰色", 0xff8a8f98},
};
constexpr NamedColour backColours[] = {
    {"浅红", 0xfff7b5b7}, {"浅橙", 0xfffbd0a0}, {"浅黄", 0xffffe58a}, {"浅绿", 0xffb0e6c3},
    {"浅青", 0xffa8e2ea}, {"浅蓝", 0xffb9d5ff}, {"浅紫", 0xffd9c7ff}, {"浅灰", 0xffd5d8dd},
};

QIcon Swatch(QRgb colour)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(QColor(colour));
    return QIcon(pixmap);
}

// The whole link around the cursor, or the selection.
QTextCursor LinkCursor(const QTextCursor& at)
{
    if (at.hasSelection())
        return at;
    const QString address = at.charFormat().anchorHref();
    QTextCursor link = at;
    if (address.isEmpty())
        return link;
    const QTextBlock block = at.block();
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const int end = fragment.position() + fragment.length();
        if (fragment.charFormat().anchorHref() == address && fragment.position() <= at.position() &&
            at.position() <= end) {
            link.setPosition(fragment.position());
            link.setPosition(end, QTextCursor::KeepAnchor);
        }
    }
    return link;
}

QTextCharFormat WithoutLink(QTextCharFormat format)
{
    format.setAnchor(false);
    format.clearProperty(QTextFormat::AnchorHref);
    format.clearForeground();
    format.setFontUnderline(false);
    return format;
}
} // namespace

RichFormatBar::RichFormatBar(RichTextView* edited, QWidget* shortcutScope)
    : view(edited), scope(shortcutScope)
{
    setObjectName(QStringLiteral("richFormatBar"));
    DpiFollower::Follow(this, [this] { setIconSize(QSize(1, 1) * DpiTool::ScaleDefault(18)); });
    setMovable(false);
    AddHeadings();
    addSeparator();
    AddInlineFormats();
    addSeparator();
    AddParagraphFormats();
    addSeparator();
    AddInsertions();
    addSeparator();
    AddEditing();
    ConnectView();
    Refresh();
}

QAction* RichFormatBar::Add(const char* icon, const QString& name, const QString& text,
                            const QKeySequence& keys, const Act& act)
{
    QAction* action = addAction(WbIcons::Get(QLatin1String(icon)), text);
    action->setObjectName(name);
    action->setToolTip(UIUtils::WithKeys(text, keys));
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    scope->addAction(action);
    connect(action, &QAction::triggered, this, [this, act] {
        const QPointer<RichFormatBar> self(this); // a dialog may outlive the editor
        act();
        if (self)
            Refresh();
    });
    if (QWidget* button = widgetForAction(action)) {
        button->setObjectName(name + QStringLiteral("Button"));
        button->setAccessibleName(text);
        button->setFocusPolicy(Qt::TabFocus);
    }
    return action;
}

QAction* RichFormatBar::AddToggle(const char* icon, const QString& name, const QString& text,
                                  const QKeySequence& keys, const Act& act)
{
    QAction* action = Add(icon, name, text, keys, act);
    action->setCheckable(true);
    return action;
}

void RichFormatBar::AddHeadings()
{
    heading = new WbComboBox;
    heading->setObjectName(QStringLiteral("comboHeading"));
    heading->addItems({QStringLiteral("正文"), QStringLiteral("标题 1"), QStringLiteral("标题 2"),
                       QStringLiteral("标题 3")});
    heading->setToolTip(QStringLiteral("段落样式（Ctrl+Alt+0 正文，Ctrl+Alt+1–3 标题）"));
    heading->setAccessibleName(QStringLiteral("段落样式"));
    addWidget(heading);
    const auto apply = [this](int level) {
        RichFormats::SetHeading(view->textCursor(), level);
        view->setFocus();
        Refresh();
    };
    connect(heading, qOverload<int>(&QComboBox::activated), this, apply);
    for (int level = 0; level <= 3; ++level) {
        auto* action = new QAction(heading->itemText(level), scope);
        action->setShortcut(QKeySequence(static_cast<int>(Qt::CTRL + Qt::ALT + Qt::Key_0 + level)));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        scope->addAction(action);
        connect(action, &QAction::triggered, this, [apply, level] { apply(level); });
    }
}

void RichFormatBar::AddInlineFormats()
{
    bold = AddToggle("bold", QStringLiteral("toolBold"), QStringLiteral("加粗"), QKeySequence::Bold, [this] {
        QTextCharFormat format;
        format.setFontWeight(bold->isChecked() ? QFont::Bold : QFont::Normal);
        MergeInline(format);
    });
    italic = AddToggle("italic", QStringLiteral("toolItalic"), QStringLiteral("斜体"), QKeySequence::Italic,
                       [this] {
                           QTextCharFormat format;
                           format.setFontItalic(italic->isChecked());
                           MergeInline(format);
                       });
    underline = AddToggle("underline", QStringLiteral("toolUnderline"), QStringLiteral("下划线"),
                          QKeySequence::Underline, [this] {
                              QTextCharFormat format;
                              format.setFontUnderline(underline->isChecked());
                              MergeInline(format);
                          });
    strike = AddToggle("strike", QStringLiteral("toolStrike"), QStringLiteral("删除线"),
                       QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_X), [this] {
                           QTextCharFormat format;
                           format.setFontStrikeOut(strike->isChecked());
                           MergeInline(format);
                       });
    AddColourMenu("color", QStringLiteral("toolTextColour"), QStringLiteral("文字颜色"), false);
    AddColourMenu("highlight", QStringLiteral("toolBackColour"), QStringLiteral("背景颜色"), true);
    Add("clear-format", QStringLiteral("toolClearFormat"), QStringLiteral("清除格式"),
        QKeySequence(Qt::CTRL + Qt::Key_Backslash), [this] { RichFormats::ClearInline(view->textCursor()); });
}

void RichFormatBar::AddParagraphFormats()
{
    bullets = AddToggle("list-bullet", QStringLiteral("toolBullets"), QStringLiteral("项目符号"),
                        QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_8),
                        [this] { RichFormats::ToggleList(view->textCursor(), QTextListFormat::ListDisc); });
    numbers = AddToggle("list-number", QStringLiteral("toolNumbers"), QStringLiteral("编号"),
                        QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_7), [this] {
                            RichFormats::ToggleList(view->textCursor(), QTextListFormat::ListDecimal);
                        });
    Add("outdent", QStringLiteral("toolOutdent"), QStringLiteral("减少缩进"),
        QKeySequence(Qt::CTRL + Qt::Key_BracketLeft),
        [this] { RichFormats::ChangeIndent(view->textCursor(), -1); });
    Add("indent", QStringLiteral("toolIndent"), QStringLiteral("增加缩进"),
        QKeySequence(Qt::CTRL + Qt::Key_BracketRight),
        [this] { RichFormats::ChangeIndent(view->textCursor(), 1); });
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("menuAlign"));
    left = AddAlignment(*menu, "align-left", QStringLiteral("toolAlignLeft"), QStringLiteral("左对齐"),
                        Qt::Key_L, Qt::AlignLeft);
    centre = AddAlignment(*menu, "align-center", QStringLiteral("toolAlignCentre"), QStringLiteral("居中"),
                          Qt::Key_E, Qt::AlignHCenter);
    right = AddAlignment(*menu, "align-right", QStringLiteral("toolAlignRight"), QStringLiteral("右对齐"),
                         Qt::Key_R, Qt::AlignRight);
    alignButton = AddMenu("align-left", QStringLiteral("toolAlign"), QStringLiteral("对齐"), menu);
}

QAction* RichFormatBar::AddAlignment(QMenu& menu, const char* icon, const QString& name, const QString& text,
                                     Qt::Key key, Qt::Alignment alignment)
{
    QAction* action = menu.addAction(WbIcons::Get(QLatin1String(icon)), text);
    action->setObjectName(name);
    action->setCheckable(true);
    action->setShortcut(QKeySequence(static_cast<int>(Qt::CTRL + key)));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    scope->addAction(action);
    connect(action, &QAction::triggered, this, [this, alignment] {
        RichFormats::SetAlignment(view->textCursor(), alignment);
        view->setFocus();
        Refresh();
    });
    return action;
}

void RichFormatBar::AddInsertions()
{
    Add("link", QStringLiteral("toolLink"), QStringLiteral("链接"), QKeySequence(Qt::CTRL + Qt::Key_K),
        [this] { EditLink(); });
    Add("image", QStringLiteral("toolPicture"), QStringLiteral("插入图片"),
        QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_I), [this] { InsertPictureFromFile(); });
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("menuTable"));
    FillTableMenu(*menu, *view);
    AddMenu("table", QStringLiteral("toolTable"), QStringLiteral("表格"), menu);
}

void RichFormatBar::AddEditing()
{
    undo = Add("undo", QStringLiteral("toolUndo"), QStringLiteral("撤销"), QKeySequence::Undo,
               [this] { view->undo(); });
    redo = Add("redo", QStringLiteral("toolRedo"), QStringLiteral("重做"), QKeySequence(Qt::CTRL + Qt::Key_Y),
               [this] { view->redo(); });
    Add("search", QStringLiteral("toolFind"), QStringLiteral("查找"), QKeySequence::Find,
        [this] { emit SigFindAsked(); });
}

QToolButton* RichFormatBar::AddMenu(const char* icon, const QString& name, const QString& text, QMenu* menu)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(WbIcons::Get(QLatin1String(icon)));
    button->setToolTip(text);
    button->setAccessibleName(text);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setMenu(menu);
    addWidget(button);
    return button;
}

void RichFormatBar::AddColourMenu(const char* icon, const QString& name, const QString& text, bool background)
{
    auto* menu = new QMenu(this);
    menu->addAction(background ? QStringLiteral("无背景") : QStringLiteral("自动"), this,
                    [this, background] { ApplyColour(QColor(), background); });
    for (const NamedColour& colour : background ? backColours : textColours) {
        const QRgb value = colour.value;
        menu->addAction(Swatch(value), QString::fromUtf8(colour.name), this,
                        [this, value, background] { ApplyColour(QColor(value), background); });
    }
    menu->addSeparator();
    menu->addAction(QStringLiteral("其他颜色…"), this, [this, background, text] {
        const QColor chosen = WbSystemDialogs::Color(this, text, Qt::white);
        if (chosen.isValid())
            ApplyColour(chosen, background);
    });
    AddMenu(icon, name, text, menu);
}

void RichFormatBar::ConnectView()
{
    connect(view, &QTextEdit::currentCharFormatChanged, this, &RichFormatBar::Refresh);
    connect(view, &QTextEdit::cursorPositionChanged, this, &RichFormatBar::Refresh);
    connect(view, &QTextEdit::undoAvailable, undo, &QAction::setEnabled);
    connect(view, &QTextEdit::redoAvailable, redo, &QAction::setEnabled);
    connect(view, &RichTextView::SigDocumentReplaced, this, &RichFormatBar::Refresh);
}

void RichFormatBar::Refresh()
{
    const QTextCursor cursor = view->textCursor();
    const QTextCharFormat format = view->currentCharFormat();
    bold->setChecked(format.fontWeight() > QFont::Medium);
    italic->setChecked(format.fontItalic());
    underline->setChecked(format.fontUnderline());
    strike->setChecked(format.fontStrikeOut());
    const QTextList* list = cursor.currentList();
    const bool ordered = list && list->format().style() <= QTextListFormat::ListDecimal;
    bullets->setChecked(list && !ordered);
    numbers->setChecked(ordered);
    const Qt::Alignment alignment = cursor.blockFormat().alignment() & Qt::AlignHorizontal_Mask;
    centre->setChecked(alignment == Qt::AlignHCenter);
    right->setChecked(alignment == Qt::AlignRight);
    left->setChecked(!centre->isChecked() && !right->isChecked());
    alignButton->setIcon(centre->isChecked()  ? centre->icon()
                         : right->isChecked() ? right->icon()
                                              : left->icon());
    heading->setCurrentIndex(RichFormats::Heading(cursor));
    undo->setEnabled(view->document()->isUndoAvailable());
    redo->setEnabled(view->document()->isRedoAvailable());
}

void RichFormatBar::MergeInline(const QTextCharFormat& format)
{
    view->mergeCurrentCharFormat(format);
    view->setFocus();
}

void RichFormatBar::ApplyColour(const QColor& colour, bool background)
{
    const QBrush brush = colour.isValid() ? QBrush(colour) : QBrush(Qt::NoBrush);
    QTextCharFormat format;
    if (!background) {
        format.setForeground(brush);
        MergeInline(format);
        return;
    }
    format.setBackground(brush);
    // A colour that came with the former background goes with it; one that the author chose stays.
    const QTextCharFormat former = view->currentCharFormat();
    const bool ownText = former.foreground().style() == Qt::SolidPattern &&
                         former.foreground().color() != RichFormats::TextOn(former.background().color());
    if (!ownText)
        format.setForeground(colour.isValid() ? QBrush(RichFormats::TextOn(colour)) : QBrush(Qt::NoBrush));
    MergeInline(format);
}

void RichFormatBar::EditLink()
{
    QTextCursor cursor = LinkCursor(view->textCursor());
    QTextCursor inside(cursor);
    inside.setPosition(cursor.selectionEnd());
    const QString former = inside.charFormat().anchorHref();
    const QString text = cursor.selectedText();
    // As a child it goes away with the editor while it is open.
    const QPointer<RichLinkDialog> dialog = new RichLinkDialog(text, former, !former.isEmpty(), this);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    dialog->deleteLater();
    if (!accepted)
        return;
    QTextCharFormat format = WithoutLink(inside.charFormat());
    if (dialog->RemoveAsked()) {
        cursor.setCharFormat(format);
        return;
    }
    const QTextCharFormat behind = format;
    format.setAnchor(true);
    format.setAnchorHref(dialog->Address());
    format.setForeground(view->palette().color(QPalette::Link));
    format.setFontUnderline(true);
    cursor.beginEditBlock();
    if (dialog->Text() == text && cursor.hasSelection())
        cursor.mergeCharFormat(format);
    else
        cursor.insertText(dialog->Text(), format);
    cursor.endEditBlock();
    cursor.setPosition(cursor.selectionEnd());
    view->setTextCursor(cursor);
    // What is typed behind the link is not part of it.
    view->setCurrentCharFormat(behind);
    view->setFocus();
}

void RichFormatBar::InsertPictureFromFile()
{
    const QPointer<RichFormatBar> self(this);
    const QString path =
        WbSystemDialogs::OpenFile(this, QStringLiteral("插入图片"), QString(),
                                  QStringLiteral("图片 (*.png *.jpg *.jpeg *.gif *.bmp *.webp)"));
    if (!self)
        return;
    if (!path.isEmpty())
        view->InsertPictureFile(path);
    view->setFocus();
}
