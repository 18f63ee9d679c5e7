// SPDX-License-Identifier: Apache-2.0

#include "SaveDialogFixture.h"

#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextEdit.h>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QtTest>

DialogUser::DialogUser(SaveSnapshotInfoWidget& dialogIn)
    : dialog(dialogIn), name(dialog.findChild<WbEditableCombo*>(QStringLiteral("comboBoxName"))),
      desc(dialog.findChild<WbTextEdit*>(QStringLiteral("plainTextEdit"))),
      labelDesc(dialog.findChild<WbLabel*>(QStringLiteral("labelDesc"))),
      ok(dialog.findChild<WbPushButton*>(QStringLiteral("pushButtonOK"))),
      cancel(dialog.findChild<WbPushButton*>(QStringLiteral("pushButtonCancel")))
{
}

void DialogUser::TypeName(const QString& text) const
{
    name->lineEdit()->selectAll();
    QTest::keyClick(name->lineEdit(), Qt::Key_Delete);
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, name->lineEdit(), Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
    }
}

void DialogUser::PickRow(int row) const
{
    name->showPopup();
    QAbstractItemView* const list = name->view();
    const QRect place = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
}

void DialogUser::PressOK() const
{
    QTest::mouseClick(ok, Qt::LeftButton);
}

QStringList DialogUser::Names() const
{
    QStringList names;
    for (int i = 0; i < name->count(); ++i)
        names.append(name->itemText(i));
    return names;
}

void SaveDialogFixture::init()
{
    service = std::make_unique<VersionServiceFixture>();
    app = VersionServiceFixture::MakeModifiedApp();
}

void SaveDialogFixture::cleanup()
{
    user.reset();
    dialog.reset();
    QTRY_VERIFY(!RpaEditorLogic::Instance()->GetSaveLedger()->HasSavesInFlight());
    service.reset();
}

void SaveDialogFixture::Open()
{
    dialog = std::make_unique<SaveSnapshotInfoWidget>(&service->window);
    dialog->SetCurrentVersionText(Text("【灰度】灰度版"));
    dialog->SetAppData(app);
    dialog->show();
    user = std::make_unique<DialogUser>(*dialog);
}
