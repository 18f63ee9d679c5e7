// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "ParamForm.h"
#include "TestFolder.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppTool/IAppParamWidget.h>

#include <QBuffer>
#include <QDateTimeEdit>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

// The types of parameters that need more than one line, and what stands around them.
class ParamKinds : public QObject, private ParamForm
{
    Q_OBJECT

private slots:
    void init() { Show(); }
    void linesAreTypedAndCutToWhatIsSeen();
    void aFolderIsChosen();
    void filesAreTypedAndChosen();
    void choicesAreTickedInTheirOrder();
    void aMomentIsNoneUntilItIsEntered();
    void aSliderGoesInStepsBetweenItsEnds();
    void aSliderOfMadNumbersIsHarmless();
    void aSliderHasNoMoreStepsThanCanBeToldApart();
    void progressIsShownAndNoChangeOfTheApp();
    void aPictureIsShown();
    void whatIsNoPictureIsTold_data();
    void whatIsNoPictureIsTold();
    void aGroupHasATitleAndTwoColumnsWhereThereIsRoom();
    void aDemandPassesOverTitles();
};

void ParamKinds::linesAreTypedAndCutToWhatIsSeen()
{
    RpaParamItem item;
    item.name = QStringLiteral("lines");
    item.type = RpaParamType::Lines;
    item.lines = 7;
    QVERIFY(params->InsertItem(-1, item) >= 0);
    auto* edit = qobject_cast<QTextEdit*>(Field(7));
    QVERIFY(edit);
    const int seven = edit->height();

    QTest::keyClicks(edit, QStringLiteral("one"));
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClicks(edit, QStringLiteral("two"));

    QCOMPARE(widget->GetParam(QStringLiteral("lines")), QVariant(QStringLiteral("one\ntwo")));
    item.lines = 3;
    QVERIFY(params->SetItem(7, item));
    QVERIFY(Field(7)->height() < seven);
    QVERIFY(widget->SetParam(QStringLiteral("lines"), QStringLiteral("run")));
    QCOMPARE(qobject_cast<QTextEdit*>(Field(7))->toPlainText(), QStringLiteral("run"));
}

void ParamKinds::aFolderIsChosen()
{
    Add("folder", RpaParamType::Folder);
    const TestFolder folder;
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([&](QFileDialog* files) {
        QCOMPARE(files->fileMode(), QFileDialog::Directory);
        files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder.path());
        QTest::keyClick(files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });

    PressTool(QStringLiteral("选择文件夹"));

    QCOMPARE(widget->GetParam(QStringLiteral("folder")).toString(), folder.path());
}

void ParamKinds::filesAreTypedAndChosen()
{
    Add("files", RpaParamType::Files);
    RpaParamItem item = params->GetItem(7);
    item.endings = QStringList{QStringLiteral("txt")};
    QVERIFY(params->SetItem(7, item));
    const TestFolder folder;
    QFile file(folder.filePath(QStringLiteral("b.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    auto* edit = qobject_cast<QTextEdit*>(Field(7));
    QTest::keyClicks(edit, QStringLiteral("/a.txt"));
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([&](QFileDialog* files) {
        QCOMPARE(files->fileMode(), QFileDialog::ExistingFiles);
        QVERIFY(files->nameFilters().value(0).contains(QStringLiteral("*.txt")));
        files->selectFile(file.fileName());
        QTest::keyClick(files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });

    PressTool(QStringLiteral("添加文件"));

    const QStringList both{QStringLiteral("/a.txt"), file.fileName()};
    QCOMPARE(widget->GetParam(QStringLiteral("files")), QVariant(both));
    QVERIFY(widget->SetParam(QStringLiteral("files"), QVariantList{QStringLiteral("/c")}));
    QCOMPARE(edit->toPlainText(), QStringLiteral("/c"));
}

void ParamKinds::choicesAreTickedInTheirOrder()
{
    Add("choices", RpaParamType::Choices);
    auto* list = qobject_cast<QListWidget*>(Field(7));
    QVERIFY(list);
    QCOMPARE(list->count(), 2);

    list->setCurrentRow(1);
    QTest::keyClick(list, Qt::Key_Space);
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Space);

    const QStringList both{QStringLiteral("甲"), QStringLiteral("乙")};
    QCOMPARE(widget->GetParam(QStringLiteral("choices")), QVariant(both));
    QVERIFY(!widget->SetParam(QStringLiteral("choices"), QStringList{QStringLiteral("丙")}));
    QVERIFY(widget->SetParam(QStringLiteral("choices"), QStringList{QStringLiteral("乙")}));
    QCOMPARE(list->item(0)->checkState(), Qt::Unchecked);
    QCOMPARE(list->item(1)->checkState(), Qt::Checked);
}

void ParamKinds::aMomentIsNoneUntilItIsEntered()
{
    Add("moment", RpaParamType::DateTime);
    auto* edit = qobject_cast<QDateTimeEdit*>(Field(7));
    QVERIFY(edit);
    QCOMPARE(edit->text(), QStringLiteral("请选择日期和时间"));
    QVERIFY(!params->GetItem(7).value.isValid());

    edit->setDateTime(QDateTime(QDate(2024, 2, 29), QTime(8, 30)));

    QCOMPARE(widget->GetParam(QStringLiteral("moment")), QVariant(QStringLiteral("2024-02-29 08:30:00")));
    QVERIFY(widget->SetParam(QStringLiteral("moment"), QStringLiteral("2025-01-02T03:04:05")));
    QCOMPARE(edit->text(), QStringLiteral("2025-01-02 03:04"));
}

void ParamKinds::aSliderGoesInStepsBetweenItsEnds()
{
    RpaParamItem item;
    item.name = QStringLiteral("slider");
    item.type = RpaParamType::Slider;
    item.least = 0.5;
    item.most = 1.5;
    item.step = 0.1;
    QVERIFY(params->InsertItem(-1, item) >= 0);
    auto* slider = qobject_cast<QSlider*>(Field(7));
    QVERIFY(slider);
    QCOMPARE(widget->GetParam(QStringLiteral("slider")), QVariant(0.5));

    QTest::keyClick(slider, Qt::Key_Right);
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(widget->GetParam(QStringLiteral("slider")), QVariant(0.7));
    QCOMPARE(slider->parentWidget()->findChild<QLabel*>(QStringLiteral("sliderNumber"))->text(),
             QStringLiteral("0.7"));
    QTest::keyClick(slider, Qt::Key_End);
    QCOMPARE(widget->GetParam(QStringLiteral("slider")), QVariant(1.5));
    QVERIFY(widget->SetParam(QStringLiteral("slider"), 1.1));
    QCOMPARE(slider->value(), 6);
}

void ParamKinds::aSliderOfMadNumbersIsHarmless()
{
    RpaParamItem item;
    item.type = RpaParamType::Slider;
    for (const auto& ends : {qMakePair(-1e308, 1e308), qMakePair(5.0, -5.0), qMakePair(1.0, 1.0)}) {
        item.name = params->MakeFreeName(QStringLiteral("s"));
        item.least = ends.first;
        item.most = ends.second;
        item.step = 1e-300;
        const int index = params->InsertItem(-1, item);
        auto* slider = qobject_cast<QSlider*>(Field(index));
        QVERIFY(slider->maximum() <= 10000);
        QTest::keyClick(slider, Qt::Key_End);
        QVERIFY(std::isfinite(widget->GetParam(item.name).toDouble()));
    }
}

void ParamKinds::aSliderHasNoMoreStepsThanCanBeToldApart()
{
    RpaParamItem item;
    item.name = QStringLiteral("slider");
    item.type = RpaParamType::Slider;
    item.least = 0.0;
    item.most = 1000000.0;
    item.step = 0.001;
    QVERIFY(params->InsertItem(-1, item) >= 0);

    auto* slider = qobject_cast<QSlider*>(Field(7));

    QCOMPARE(slider->maximum(), 10000);
    slider->setValue(1);
    QCOMPARE(widget->GetParam(QStringLiteral("slider")), QVariant(100.0));
}

void ParamKinds::progressIsShownAndNoChangeOfTheApp()
{
    Add("progress", RpaParamType::Progress);
    auto* bar = qobject_cast<QProgressBar*>(Field(7));
    QVERIFY(bar);
    QSignalSpy changed(params.get(), &RpaParamData::SigChanged);

    QVERIFY(widget->SetParam(QStringLiteral("progress"), 42.9));
    QVERIFY(!widget->SetParam(QStringLiteral("progress"), 100.5));
    QVERIFY(!widget->SetParam(QStringLiteral("progress"), -1));

    QCOMPARE(bar->value(), 42);
    QCOMPARE(bar->parentWidget()->findChild<QLabel*>(QStringLiteral("progressPercent"))->text(),
             QStringLiteral("42%"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(params->GetResultCount(), 0);
}

void ParamKinds::aPictureIsShown()
{
    Add("picture", RpaParamType::Picture);
    auto* label = qobject_cast<QLabel*>(Field(7));
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("运行后显示图片"));
    const TestFolder folder;
    QImage image(960, 320, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(folder.filePath(QStringLiteral("a.png"))));

    QVERIFY(widget->SetParam(QStringLiteral("picture"), folder.filePath(QStringLiteral("a.png"))));

    QTRY_VERIFY(label->pixmap(Qt::ReturnByValue).width() > 0);
    QCOMPARE(label->pixmap(Qt::ReturnByValue).size(), QSize(480, 160));
    QCOMPARE(label->pixmap(Qt::ReturnByValue).toImage().pixelColor(5, 5), QColor(Qt::red));
}

void ParamKinds::whatIsNoPictureIsTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("words");
    QByteArray vast;
    QBuffer buffer(&vast);
    buffer.open(QIODevice::WriteOnly);
    QImage(4, 4, QImage::Format_RGB32).save(&buffer, "bmp");
    vast.replace(18, 8, QByteArray("\x58\x1b\0\0\x58\x1b\0\0", 8)); // 7000 × 7000
    QTest::newRow("none") << QByteArray() << QStringLiteral("找不到");
    QTest::newRow("text") << QByteArray("hello") << QStringLiteral("不是图片");
    QTest::newRow("of another kind") << QByteArray(
                                            R"(/* XPM */ static char* a[] = {"1 1 1 1","a c red","a"};)")
                                     << QStringLiteral("不是图片");
    QTest::newRow("too many pixels") << vast << QStringLiteral("像素");
    QTest::newRow("too long") << QByteArray(16 * 1024 * 1024 + 1, 'x') << QStringLiteral("16 MB");
}

void ParamKinds::whatIsNoPictureIsTold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, words);
    Add("picture", RpaParamType::Picture);
    const TestFolder folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    QFile file(path);
    if (!bytes.isEmpty())
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush());

    QVERIFY(widget->SetParam(QStringLiteral("picture"), path));

    QTRY_VERIFY2(qobject_cast<QLabel*>(Field(7))->text().contains(words),
                 qPrintable(qobject_cast<QLabel*>(Field(7))->text()));
}

void ParamKinds::aGroupHasATitleAndTwoColumnsWhereThereIsRoom()
{
    const auto left = [this](int index) { return Field(index)->mapTo(widget, QPoint(0, 0)).x(); };
    const auto top = [this](int index) { return Field(index)->mapTo(widget, QPoint(0, 0)).y(); };
    // Too wide to stand side by side in a narrow window.
    for (int index = 1; index < 3; ++index) {
        RpaParamItem item = params->GetItem(index);
        item.label = QString(20, QChar(0x540d));
        QVERIFY(params->SetItem(index, item));
    }
    RpaParamItem group;
    group.name = QStringLiteral("g");
    group.label = QStringLiteral("收货人");
    group.type = RpaParamType::Group;
    group.columns = 2;
    QCOMPARE(params->InsertItem(1, group), 1);
    group.name = QStringLiteral("h");
    group.label = QStringLiteral("其他");
    group.columns = 1;
    QCOMPARE(params->InsertItem(5, group), 5);
    QVBoxLayout layout(host.get());
    layout.setContentsMargins(0, 0, 0, 0);
    layout.addWidget(widget);
    host->resize(900, 500);

    const auto titles = widget->findChildren<QLabel*>(QStringLiteral("paramGroupTitle"));
    QCOMPARE(titles.size(), 2);
    QCOMPARE(titles.at(0)->text(), QStringLiteral("收货人"));
    QTRY_VERIFY(left(2) > left(1) + 200); // number, date
    QCOMPARE(top(1), top(2));
    QVERIFY(top(3) > top(2)); // the choice alone in the next line
    QCOMPARE(left(3), left(1));
    QVERIFY(titles.at(0)->y() > top(0) && titles.at(0)->y() < top(1));
    QVERIFY(titles.at(1)->y() > top(3) && titles.at(1)->y() < top(4));
    QVERIFY(top(5) > top(4)); // one column again
    QVERIFY(!widget->GetParamNames().contains(QStringLiteral("g")));

    host->resize(400, 500);
    QTRY_VERIFY(top(2) > top(1));
    QCOMPARE(left(2), left(1));
}

void ParamKinds::aDemandPassesOverTitles()
{
    RpaParamItem group;
    group.name = QStringLiteral("g");
    group.type = RpaParamType::Group;
    group.required = true;
    QCOMPARE(params->InsertItem(0, group), 0);
    Demand(2, QStringLiteral("数量"), 1, 5);

    QCOMPARE(widget->DemandValues(), QStringLiteral("请填写“数量”"));
    QVERIFY(Problem(1));
    QVERIFY(widget->SetParam(QStringLiteral("number"), 3));
    QCOMPARE(widget->DemandValues(), QString());
}

QTEST_MAIN(ParamKinds)

#include "tst_paramkinds.moc"
