// SPDX-License-Identifier: Apache-2.0

#include "RichFindBar_p.h"
#include "RichFormatBar_p.h"
#include "RichHtmlWriter_p.h"
#include "RichNotice_p.h"
#include "RichTextView_p.h"

#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbTextLimit.h>
#include <WbBaseUI/WbToast.h>
#include <WbWebKernal/WbRichEditor.h>

#include <QAction>
#include <QDesktopServices>
#include <QEvent>
#include <QUrl>
#include <QVBoxLayout>

class WbRichEditor::Private
{
public:
    explicit Private(WbRichEditor* editor)
        : q(editor), view(new RichTextView), bar(new RichFormatBar(view, editor)), notice(new RichNotice),
          findBar(new RichFindBar(view, editor)), limit(new WbTextLimit(view, QStringLiteral("使用说明")))
    {
    }

    void Layout()
    {
        auto* layout = new QVBoxLayout(q);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(bar);
        layout->addWidget(notice);
        layout->addWidget(findBar);
        layout->addWidget(view);
        view->setObjectName(QStringLiteral("richTextView"));
        view->setPlaceholderText(
            QStringLiteral("在这里写使用说明：这个应用做什么、运行前要准备什么、怎样填写参数、"
                           "出错时怎么办。可以插入图片、表格和链接，也可以直接粘贴。"));
        new WbFocusForward(q, view);
    }

    void ConnectParts()
    {
        QObject::connect(bar, &RichFormatBar::SigFindAsked, findBar, &RichFindBar::OpenWithSelection);
        QObject::connect(view, &RichTextView::SigDocumentReplaced, q, [this] { WatchDocument(); });
        QObject::connect(view, &RichTextView::SigDocumentReplaced, findBar,
                         &RichFindBar::SlotDocumentReplaced);
        QObject::connect(view, &RichTextView::SigLinkActivated, q,
                         [](const QString& address) { QDesktopServices::openUrl(QUrl(address)); });
        QObject::connect(view, &RichTextView::SigRefused, q,
                         [](const QString& reason) { WbToast::Show(reason, ToastWarning); });
        QObject::connect(notice, &RichNotice::SigAccepted, q, [this] { WriteWords(); });
        AddKey(QKeySequence(Qt::Key_F3), [this] { findBar->FindNext(); });
        AddKey(QKeySequence(Qt::SHIFT + Qt::Key_F3), [this] { findBar->FindPrevious(); });
        WatchDocument();
    }

    template <typename Act>
    void AddKey(const QKeySequence& keys, Act act)
    {
        auto* action = new QAction(q);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        q->addAction(action);
        QObject::connect(action, &QAction::triggered, q, act);
    }

    void WatchDocument()
    {
        RichDocument* document = view->Document();
        WbEditHistory::Instance()->Watch(document, view);
        QObject::connect(
            document, &QTextDocument::contentsChange, q,
            [document](int position, int, int added) { RichHtmlWriter::Forget(*document, position, added); });
        QObject::connect(document, &QTextDocument::contentsChanged, q, [this] { TakeChange(); });
    }

    void ShowProblem()
    {
        const QString problem = view->GetProblem();
        bar->setEnabled(problem.isEmpty());
        if (problem.isEmpty()) {
            notice->hide();
            return;
        }
        const QString kept =
            QStringLiteral("使用说明%1，这里只显示它的文字。原文没有改动，会照原样保存。").arg(problem);
        if (view->IsComplete())
            notice->Show(kept, QStringLiteral("改成纯文字再编辑"));
        else
            notice->Show(kept + QStringLiteral("文字太长，只显示开头部分。"), QString());
    }

    // The words become the text with the first edit; undoing it gives the former text again.
    void WriteWords()
    {
        notice->hide();
        bar->setEnabled(true);
        view->setReadOnly(false);
        view->setFocus();
    }

    void TakeChange()
    {
        const QString clean = RichHtmlWriter::Write(*view->Document(), view->Document()->Images());
        if (clean == current)
            return; // a format that was there already, a selection, a cursor
        if (!limit->Check(clean))
            return;
        current = clean;
        emit q->SigTextChanged(Text());
    }

    // Undoing everything gives the very text that was loaded, however it was written.
    QString Text() const { return current == loadedClean ? loaded : current; }

    WbRichEditor* const q;
    RichTextView* const view;
    RichFormatBar* const bar;
    RichNotice* const notice;
    RichFindBar* const findBar;
    WbTextLimit* const limit;
    QString loaded;      // as given
    QString loadedClean; // as this editor writes it
    QString current;
};

WbRichEditor::WbRichEditor(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>(this))
{
    d->Layout();
    d->ConnectParts();
}

WbRichEditor::~WbRichEditor()
{
    // The document outlives d and would report to it.
    d->view->Document()->disconnect(this);
}

void WbRichEditor::Init(const QString& text)
{
    d->view->LoadText(text);
    d->loaded = text;
    d->loadedClean = RichHtmlWriter::Write(*d->view->Document(), d->view->Document()->Images());
    d->current = d->loadedClean;
    d->ShowProblem();
    d->limit->Load(d->current);
}

QString WbRichEditor::GetText() const
{
    return d->Text();
}

void WbRichEditor::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        d->view->RecolourLinks();
}
