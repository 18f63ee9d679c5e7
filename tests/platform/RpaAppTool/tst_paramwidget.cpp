// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "ParamForm.h"
#include "TestFolder.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppTool/IAppParamWidget.h>
#include <WbBaseUI/WbTheme.h>

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

class ParamWidget : public QObject, private ParamForm
{
    Q_OBJECT

private slots:
    void init() { Show(); }
    void eachTypeHasItsField();
    void typingSetsTheValue();
    void typingIntoALongValueKeepsAllOfIt();
    void aValueTooLongForOneLineIsShownAndKept();
    void aRunReadsAndWritesValues();
    void aValueThatDoesNotFitIsRefused();
    void anEmptyRequiredFieldIsMarked();
    void aRunDemandsWhatIsMissing();
    void aDemandGoesWhenItIsMet();
    void aDemandIsScrolledTo();
    void fieldsKeepTheirHeightWhereRoomIsShort();
    void aNumberNobodyEnteredIsNotShownAsNought();
    void aDateIsNoneUntilItIsEntered();
    void passwordsAreHidden();
    void theCalendarShowsWholeWeeksInChinese();
    void aFileIsChosen();
    void itsEndWhileAFileIsChosenChangesNothing();
    void aFieldThatIsGoneTakesNoFile();

private:
    void PressChooseFile() { PressTool(QStringLiteral("选择文件")); }
};

void ParamWidget::eachTypeHasItsField()
{
    QCOMPARE(widget->findChildren<QWidget*>(QStringLiteral("paramField")).size(), 7);
    QVERIFY(qobject_cast<QLineEdit*>(Field(0)));
    QVERIFY(qobject_cast<QLineEdit*>(Field(1)));
    QVERIFY(qobject_cast<QDateTimeEdit*>(Field(2)));
    QVERIFY(qobject_cast<QComboBox*>(Field(3)));
    QVERIFY(qobject_cast<QCheckBox*>(Field(4)));
}

void ParamWidget::typingSetsTheValue()
{
    QTest::keyClicks(Field(0), QStringLiteral("abc"));
    QTest::keyClicks(Field(1), QStringLiteral("2.5"));
    QTest::mouseClick(Field(4), Qt::LeftButton, {}, QPoint(8, Field(4)->height() / 2));

    QCOMPARE(widget->GetParam(QStringLiteral("text")).toString(), QStringLiteral("abc"));
    QCOMPARE(widget->GetParam(QStringLiteral("number")).toDouble(), 2.5);
    QCOMPARE(widget->GetParam(QStringLiteral("switch")).toBool(), true);
    QCOMPARE(static_cast<QLineEdit*>(Field(1))->text(), QStringLiteral("2.5"));
}

void ParamWidget::typingIntoALongValueKeepsAllOfIt()
{
    const QString value(100000, QLatin1Char('x'));
    QVERIFY(widget->SetParam(QStringLiteral("text"), value));

    Field(0)->setFocus();
    QTest::keyClick(Field(0), Qt::Key_End);
    QTest::keyClicks(Field(0), QStringLiteral("y"));

    QVERIFY(widget->GetParam(QStringLiteral("text")).toString() == value + QLatin1Char('y'));
}

void ParamWidget::aValueTooLongForOneLineIsShownAndKept()
{
    const QString value(2000000, QLatin1Char('x'));
    QVERIFY(widget->SetParam(QStringLiteral("text"), value));

    QTest::keyClicks(Field(0), QStringLiteral("y"));

    QVERIFY(widget->GetParam(QStringLiteral("text")).toString() == value);
    QVERIFY(!Field(0)->toolTip().isEmpty());
    QVERIFY(widget->SetParam(QStringLiteral("text"), QStringLiteral("short")));
    QTest::keyClicks(Field(0), QStringLiteral("y"));
    QCOMPARE(widget->GetParam(QStringLiteral("text")).toString(), QStringLiteral("shorty"));
    QVERIFY(Field(0)->toolTip().isEmpty());
}

void ParamWidget::aRunReadsAndWritesValues()
{
    QVERIFY(widget->SetParam(QStringLiteral("choice"), QStringLiteral("乙")));

    QCOMPARE(static_cast<QComboBox*>(Field(3))->currentText(), QStringLiteral("乙"));
    QCOMPARE(widget->GetParam(QStringLiteral("choice")).toString(), QStringLiteral("乙"));
    QVERIFY(!widget->GetParam(QStringLiteral("missing")).isValid());
}

void ParamWidget::aValueThatDoesNotFitIsRefused()
{
    QVERIFY(!widget->SetParam(QStringLiteral("number"), QStringLiteral("many")));
    QVERIFY(!widget->SetParam(QStringLiteral("choice"), QStringLiteral("丙")));
    QVERIFY(!widget->SetParam(QStringLiteral("missing"), 1));
}

void ParamWidget::anEmptyRequiredFieldIsMarked()
{
    RpaParamItem item = params->GetItem(0);
    item.required = true;
    QVERIFY(params->SetItem(0, item));
    QVERIFY(Field(0)->property("missing").toBool());

    QTest::keyClicks(Field(0), QStringLiteral("x"));

    QVERIFY(!Field(0)->property("missing").toBool());
}

void ParamWidget::aRunDemandsWhatIsMissing()
{
    Demand(1, QStringLiteral("数量"), 5.0, 9.0);
    Demand(5, QStringLiteral("发票"), {}, {});
    QSignalSpy demanded(widget, &IAppParamWidget::SigDemanded);
    host->activateWindow();

    QCOMPARE(widget->DemandValues(), QStringLiteral("请填写“数量”"));

    QCOMPARE(demanded.size(), 1);
    QTRY_VERIFY(Field(1)->hasFocus());
    QCOMPARE(Problem(1)->text(), QStringLiteral("请填写“数量”"));
    QVERIFY(Problem(1)->isVisible());
    QCOMPARE(Problem(5)->text(), QStringLiteral("请选择“发票”"));
    QVERIFY(!Problem(0));

    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("12"));

    QCOMPARE(Problem(1)->text(), QStringLiteral("“数量”应在 5 到 9 之间"));
    QCOMPARE(widget->DemandValues(), QStringLiteral("“数量”应在 5 到 9 之间"));
}

void ParamWidget::aDemandGoesWhenItIsMet()
{
    Demand(0, QStringLiteral("客户"), {}, {});
    QCOMPARE(widget->DemandValues(), QStringLiteral("请填写“客户”"));

    QTest::keyClicks(Field(0), QStringLiteral("A"));

    QVERIFY(!Problem(0)->isVisible());
    QCOMPARE(widget->DemandValues(), QString());
}

void ParamWidget::aDemandIsScrolledTo()
{
    QScrollArea area;
    area.setWidgetResizable(true);
    area.setWidget(host.get());
    host->setLayout(new QVBoxLayout);
    host->layout()->addWidget(widget);
    area.resize(300, 90);
    Demand(6, QStringLiteral("口令"), {}, {});
    area.show();
    QTRY_VERIFY(Field(6)->mapTo(&area, QPoint()).y() > area.height());

    QCOMPARE(widget->DemandValues(), QStringLiteral("请填写“口令”"));

    const auto isSeen = [&](const QWidget* part) {
        const QRect place(part->mapTo(area.viewport(), QPoint()), part->size());
        return area.viewport()->rect().contains(place);
    };
    QTRY_VERIFY(isSeen(Field(6)) && isSeen(Problem(6)));
    area.takeWidget();
}

void ParamWidget::fieldsKeepTheirHeightWhereRoomIsShort()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light); // its least heights
    host->resize(400, widget->sizeHint().height());
    widget->resize(host->size());
    QCoreApplication::processEvents();
    const int height = Field(0)->height();
    QVERIFY(height >= 30);
    QVERIFY(!Field(6)->visibleRegion().isEmpty());

    widget->resize(400, 120);

    QTRY_VERIFY(Field(6)->visibleRegion().isEmpty());
    for (const int index : {0, 1, 3, 6})
        QCOMPARE(Field(index)->height(), height);
    Demand(6, QStringLiteral("口令"), QVariant(), QVariant());
    QVERIFY(!widget->DemandValues().isEmpty());
    QTRY_VERIFY(!Field(6)->visibleRegion().isEmpty());
}

void ParamWidget::aNumberNobodyEnteredIsNotShownAsNought()
{
    Demand(1, QStringLiteral("数量"), {}, {});
    auto* edit = static_cast<QLineEdit*>(Field(1));

    QCOMPARE(edit->text(), QString());
    QTest::keyClicks(edit, QStringLiteral("0"));

    QCOMPARE(edit->text(), QStringLiteral("0"));
    QCOMPARE(widget->DemandValues(), QString());
}

void ParamWidget::aDateIsNoneUntilItIsEntered()
{
    auto* date = qobject_cast<QDateTimeEdit*>(Field(2));
    QCOMPARE(date->text(), QStringLiteral("请选择日期"));
    QVERIFY(!widget->GetParam(QStringLiteral("date")).toDate().isValid());

    QTest::keyClick(date, Qt::Key_Up);

    QCOMPARE(widget->GetParam(QStringLiteral("date")).toDate(), date->date());
    QCOMPARE(date->text(), date->date().toString(Qt::ISODate));
    params->SetValue(2, QVariant());
    QCOMPARE(date->text(), QStringLiteral("请选择日期"));

    date->setFocus();
    QTest::keyClicks(date, QStringLiteral("2031"));

    QCOMPARE(widget->GetParam(QStringLiteral("date")).toDate().year(), 2031);
}

void ParamWidget::passwordsAreHidden()
{
    QCOMPARE(static_cast<QLineEdit*>(Field(6))->echoMode(), QLineEdit::Password);
    QCOMPARE(widget->GetSecretParamNames(), QStringList{QStringLiteral("password")});
}

void ParamWidget::theCalendarShowsWholeWeeksInChinese()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);                    // its fonts and paddings
    QVERIFY(widget->SetParam(QStringLiteral("date"), QDate(2024, 3, 31))); // six weeks
    auto* date = qobject_cast<QDateTimeEdit*>(Field(2));

    QTest::mouseClick(date, Qt::LeftButton, {}, QPoint(date->width() - 10, date->height() / 2));

    const QCalendarWidget* calendar = date->calendarWidget();
    QTRY_VERIFY(calendar && calendar->isVisible());
    QCOMPARE(calendar->locale().language(), QLocale::Chinese);
    const auto* days = calendar->findChild<QTableView*>(QStringLiteral("qt_calendar_calendarview"));
    const int lastRow = days->model()->rowCount() - 1;
    const QRect last = days->visualRect(days->model()->index(lastRow, 1));
    QTRY_VERIFY(days->viewport()->rect().contains(last));
    QVERIFY(last.height() >= days->fontMetrics().height());
    calendar->window()->close();
}

void ParamWidget::aFileIsChosen()
{
    const TestFolder folder;
    QFile file(folder.filePath(QStringLiteral("发票.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([&](QFileDialog* files) {
        QCOMPARE(files->windowTitle(), QStringLiteral("选择文件"));
        files->selectFile(file.fileName());
        QTest::keyClick(files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });

    PressChooseFile();

    QCOMPARE(params->GetItem(5).GetEffectiveValue().toString(), file.fileName());
}

void ParamWidget::itsEndWhileAFileIsChosenChangesNothing()
{
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([this](QFileDialog*) { host.reset(); });

    PressChooseFile();

    QVERIFY(!host);
    QCOMPARE(params->GetItem(5).GetEffectiveValue().toString(), QString());
}

// A run, or another page, may build the fields anew meanwhile.
void ParamWidget::aFieldThatIsGoneTakesNoFile()
{
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([this](QFileDialog*) { params->RemoveItem(0); });

    PressChooseFile();

    QCOMPARE(params->GetItem(4).GetEffectiveValue().toString(), QString());
}

QTEST_MAIN(ParamWidget)

#include "tst_paramwidget.moc"
