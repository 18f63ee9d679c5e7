// SPDX-License-Identifier: Apache-2.0

#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QTextEdit>

// Gray release and publishing, with every question on the way.

using namespace TourLook;

namespace
{
// Every version is known by the line of its instructions.
QString LineOf(const QString& version)
{
    return version + QStringLiteral("的说明。");
}

bool HasLine(const QString& line)
{
    const QTextEdit* edit = InstructionsEdit();
    return edit && edit->toPlainText().contains(line);
}

int StateOf(const QString& version)
{
    RpaSnapshotManager* versions = RpaEditorLogic::Instance()->GetDevSnapshotManager();
    for (int i = 0; i < versions->GetCount(); ++i)
        if (versions->GetSnapshot(i)->GetName() == version)
            return versions->GetSnapshot(i)->GetState();
    return 0;
}

bool HasIcon(QListWidget* list, int row, const char* image)
{
    const QWidget* item = list && row >= 0 ? list->itemWidget(list->item(row)) : nullptr;
    const auto* icon = item ? item->findChild<QLabel*>(QStringLiteral("rpa_version_combo_icon")) : nullptr;
    const QPixmap shown = icon ? icon->pixmap(Qt::ReturnByValue) : QPixmap();
    const QPixmap expected(QStringLiteral(":/images/rpa/") + QLatin1String(image));
    return !shown.isNull() &&
           shown.toImage() ==
               expected.scaled(shown.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation).toImage();
}

QStringList ShownCodes()
{
    const QWidget* dialog = Visible("InvitationDialog");
    QStringList codes;
    for (const QLabel* code :
         dialog ? dialog->findChildren<QLabel*>(QStringLiteral("labelCode")) : QList<QLabel*>())
        if (code->isVisible())
            codes.append(code->text());
    return codes;
}
} // namespace

void Tour::SaveAs(const QString& name)
{
    EditInstructions(LineOf(name));
    d->Click(QStringLiteral("save as"), Named("pushButtonSaveAs"));
    d->Click(QStringLiteral("name"), Named("comboBoxName"));
    d->Type(name);
    d->Click(QStringLiteral("OK"), Named("pushButtonOK"));
    UntilCurrent(name);
}

void Tour::SwitchTo(const QString& name, const QString& lineOfAnother)
{
    OpenDropDown();
    PressRow(name);
    UntilCurrent(name);
    d->Until(QStringLiteral("the content of ") + name,
             [=] { return HasLine(LineOf(name)) && !HasLine(lineOfAnother); });
    UntilLoaded();
}

void Tour::Answer(const QString& button)
{
    d->Click(button, TourDriver::DialogButton(button));
    d->Until(QStringLiteral("the box's end"), [] { return !QApplication::activeModalWidget(); });
}

void Tour::UntilState(const QString& version, int state)
{
    d->Until(QStringLiteral("the state of ") + version, [=] { return StateOf(version) == state; });
}

// The tables of the app hold rows.
void Tour::LetDataGoAlong()
{
    d->Until(QStringLiteral("the data that goes along"),
             [] { return Visible("TakenAlongDialog") != nullptr; });
    d->TakePicture();
    d->Click(QStringLiteral("go on"), Named("buttonGoOn"));
}

void Tour::PublishDevelopVersion()
{
    const QString version = QStringLiteral("上线版");
    d->Step(QStringLiteral("release-refused-unsaved"), [=] {
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("save"), Named("pushButtonSave"));
        UntilToast(QStringLiteral("保存成功"));
        UntilState(QStringLiteral("版本1"), AppSnapshotDevelop);
        SaveAs(QStringLiteral("试用版"));
        SaveAs(QStringLiteral("候选版"));
        SaveAs(version);
        EditInstructions(QStringLiteral("还没有保存。"));
        for (const char* button : {"pushButtonBeta", "pushButtonPublish"}) {
            d->Click(QLatin1String(button), Named(button));
            UntilBox(QStringLiteral("当前版本未保存，请保存后再操作。"));
            d->TakePicture();
            Answer(QStringLiteral("确定"));
        }
    });
    d->Step(QStringLiteral("publish-question"), [this] {
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("save"), Named("pushButtonSave"));
        UntilToast(QStringLiteral("保存成功"));
        d->Click(QStringLiteral("publish"), Named("pushButtonPublish"));
        UntilBox(QStringLiteral("确定发布上线吗"));
    });
    d->Step(QStringLiteral("publish-declined"), [=] {
        Answer(QStringLiteral("否"));
        UntilCurrent(version);
        UntilState(version, AppSnapshotDevelop);
    });
    d->Step(QStringLiteral("published"), [=] {
        d->Click(QStringLiteral("publish"), Named("pushButtonPublish"));
        UntilBox(QStringLiteral("确定发布上线吗"));
        d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("是")));
        LetDataGoAlong();
        UntilToast(QStringLiteral("“%1”已上线").arg(releasedApp));
        UntilCurrent(QStringLiteral("【线上】") + version);
        UntilLoaded();
        d->TakePicture();
    });
}

void Tour::ReleaseGrayVersion()
{
    const QString version = QStringLiteral("试用版");
    const QString question = QStringLiteral("确定开始灰度吗？");
    d->Step(QStringLiteral("gray-question"), [=] {
        d->UntilCalm();
        SwitchTo(version, LineOf(QStringLiteral("候选版")));
        d->Click(QStringLiteral("gray"), Named("pushButtonBeta"));
        UntilBox(question);
    });
    d->Step(QStringLiteral("gray-declined"), [=] {
        Answer(QStringLiteral("否"));
        UntilCurrent(version);
        UntilState(version, AppSnapshotDevelop);
    });
    d->Step(QStringLiteral("gray-released"), [=] {
        d->Click(QStringLiteral("gray"), Named("pushButtonBeta"));
        UntilBox(question);
        d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("是")));
        LetDataGoAlong();
        d->Until(QStringLiteral("an invitation code"), [] { return ShownCodes().size() == 1; });
    });
    d->Step(QStringLiteral("invitation-code-copied"), [this] {
        d->Click(QStringLiteral("copy"), Named("buttonCopy"));
        UntilToast(QStringLiteral("邀请码已复制"));
        d->Until(QStringLiteral("the code on the clipboard"),
                 [] { return QApplication::clipboard()->text() == ShownCodes().value(0); });
        d->TakePicture();
        d->Click(QStringLiteral("done"), Named("buttonClose"));
    });
    d->Step(QStringLiteral("releases-in-the-drop-down"), [=] {
        UntilCurrent(QStringLiteral("【灰度】") + version);
        UntilLoaded();
        d->UntilCalm();
        OpenDropDown();
        d->Until(QStringLiteral("an icon for every state"), [version] {
            const auto has = [](const QString& name, const char* image) {
                return HasIcon(VersionList(), RowOf(name), image);
            };
            return has(QStringLiteral("【灰度】") + version, "version_icon_beta.png") &&
                   has(QStringLiteral("【线上】上线版"), "version_icon_online.png") &&
                   has(QStringLiteral("版本1"), "document_link.png");
        });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
    });
    d->Step(QStringLiteral("gray-only-once"), [this] {
        d->Click(QStringLiteral("gray"), Named("pushButtonBeta"));
        UntilBox(QStringLiteral("灰度版本不能再次灰度。"));
        d->TakePicture();
        Answer(QStringLiteral("确定"));
    });
}

void Tour::PublishGrayVersion()
{
    const QString version = QStringLiteral("候选版");
    const QString change = QStringLiteral("灰度期间的修改。");
    const QString question =
        QStringLiteral("仅支持上线原灰度版本内容，针对当前灰度版本修改将忽略，确定发布上线吗？");
    const auto ask = [=] {
        d->Click(QStringLiteral("publish"), Named("pushButtonPublish"));
        UntilBox(question);
    };
    d->Step(QStringLiteral("gray-question-dark"), [=] {
        SwitchTo(version, LineOf(QStringLiteral("上线版")));
        UseTheme(ThemeChoice::Dark);
        d->Click(QStringLiteral("gray"), Named("pushButtonBeta"));
        UntilBox(QStringLiteral("确定开始灰度吗？"));
    });
    d->Step(QStringLiteral("gray-of-another-version-dark"), [=] {
        d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("是")));
        LetDataGoAlong();
        d->Until(QStringLiteral("the code that is open already"),
                 [] { return ShownCodes() == QStringList(QApplication::clipboard()->text()); });
        d->TakePicture();
        d->Click(QStringLiteral("done"), Named("buttonClose"));
        UntilCurrent(QStringLiteral("【灰度】") + version);
        UntilLoaded();
    });
    d->Step(QStringLiteral("publish-changed-gray-version-question-dark"), [=] {
        EditInstructions(change);
        ask();
    });
    d->Step(QStringLiteral("publish-changed-gray-version-declined"), [=] {
        Answer(QStringLiteral("否"));
        UseTheme(usualTheme);
        UntilState(version, AppSnapshotGray);
        d->Until(QStringLiteral("the change"), [change] { return HasLine(change); });
    });
    d->Step(QStringLiteral("publish-changed-gray-version-question"), [=] { ask(); });
    d->Step(QStringLiteral("publish-changed-gray-version"), [=] {
        d->OnGui([this] { toasts->Clear(); });
        Answer(QStringLiteral("是"));
        UntilToast(QStringLiteral("“%1”已上线").arg(releasedApp));
        UntilCurrent(QStringLiteral("【线上】") + version);
        UntilState(version, AppSnapshotOnline);
        d->Until(QStringLiteral("the content that went online"),
                 [=] { return HasLine(LineOf(version)) && !HasLine(change); });
        d->TakePicture();
    });
}
