// SPDX-License-Identifier: Apache-2.0

#include "RpaVersionItem.h"
#include "TestApp.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/ElidedLabelEx.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace
{

void Send(QWidget* widget, QEvent::Type type)
{
    QEvent event(type);
    QApplication::sendEvent(widget, &event);
}

} // namespace

class TestRpaVersionItem : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void offersDeletionOfDevelopVersionsUnderTheMouseOnly_data();
    void offersDeletionOfDevelopVersionsUnderTheMouseOnly();
    void announcesItsDataWhenDeleted();
    void keepsWhatItWasGiven();
    void showsItsNameAndTip();
    void showsTheIconOfItsState_data();
    void showsTheIconOfItsState();
    void passesEventsOfItsIconOn();
    void scalesItsMeasures();
    void sharesItsPictureWithOtherRows();
    void standsInOrder();
    void showsAnIconForItsScale();
    void isNotScaledAnyMoreOnceItIsGone();
    void staysHiddenOutOfSight();
    void followsTheScaleBeforeItWasShown();
    void offersDeletionEvenBeforeItWasShown();

private:
    template <typename Part>
    Part* Find(const char* name) const
    {
        return row->findChild<Part*>(QLatin1String(name));
    }

    std::unique_ptr<RpaVersionItem> row;
};

void TestRpaVersionItem::init()
{
    row = std::make_unique<RpaVersionItem>(nullptr);
    row->resize(200, 30);
    row->show();
}

void TestRpaVersionItem::cleanup()
{
    row.reset();
    DpiTool::SetScale(1.0);
}

void TestRpaVersionItem::offersDeletionOfDevelopVersionsUnderTheMouseOnly_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("offered");

    QTest::newRow("development version") << QVariant(QStringLiteral("id")) << 1 << true;
    QTest::newRow("gray version") << QVariant(QStringLiteral("id")) << 2 << false;
    QTest::newRow("online version") << QVariant(QStringLiteral("id")) << 3 << false;
    QTest::newRow("default row without an id") << QVariant(QString()) << 1 << false;
    QTest::newRow("row without data") << QVariant() << 1 << false;
    QTest::newRow("unknown state") << QVariant(QStringLiteral("id")) << 0 << false;
}

void TestRpaVersionItem::offersDeletionOfDevelopVersionsUnderTheMouseOnly()
{
    QFETCH(QVariant, data);
    QFETCH(int, state);
    QFETCH(bool, offered);

    // given
    row->SetData(data);
    row->SetState(state);
    auto* button = Find<QPushButton>("rpa_version_combo_delete");
    QVERIFY(button->isHidden());

    // when, then
    Send(row.get(), QEvent::Enter);
    QCOMPARE(button->isVisible(), offered);
    Send(row.get(), QEvent::Leave);
    QVERIFY(button->isHidden());
}

void TestRpaVersionItem::announcesItsDataWhenDeleted()
{
    // given
    row->SetData(QStringLiteral("id7"));
    row->SetState(1);
    QSignalSpy deleted(row.get(), &RpaVersionItem::SigDelete);
    Send(row.get(), QEvent::Enter);

    // when
    QTest::mouseClick(Find<QPushButton>("rpa_version_combo_delete"), Qt::LeftButton);

    // then
    QCOMPARE(deleted.size(), 1);
    QCOMPARE(deleted.constFirst().constFirst().value<QVariant>(), QVariant(QStringLiteral("id7")));
}

void TestRpaVersionItem::keepsWhatItWasGiven()
{
    row->SetName(QString::fromUtf8("版本1"));
    row->SetData(QStringLiteral("id"));
    row->SetState(2);
    row->SetTip(QString::fromUtf8("说明"));

    QCOMPARE(row->GetName(), QString::fromUtf8("版本1"));
    QCOMPARE(row->GetData(), QVariant(QStringLiteral("id")));
    QCOMPARE(row->GetState(), 2);
    QCOMPARE(row->GetTip(), QString::fromUtf8("说明"));
}

void TestRpaVersionItem::showsItsNameAndTip()
{
    // given
    RpaVersionItem early;
    early.SetName(QString::fromUtf8("先设"));
    early.SetTip(QString::fromUtf8("先说明"));

    // when
    early.show();
    row->SetName(QString::fromUtf8("后设"));
    row->SetTip(QString::fromUtf8("后说明"));

    // then
    const auto name = [](const RpaVersionItem& item) {
        return item.findChild<ElidedLabelEx*>(QStringLiteral("rpa_version_combo_text"))->GetText();
    };
    const auto tip = [](const RpaVersionItem& item) {
        return item.findChild<QLabel*>(QStringLiteral("rpa_version_combo_icon"))->toolTip();
    };
    QCOMPARE(name(early), QString::fromUtf8("先设"));
    QCOMPARE(tip(early), QString::fromUtf8("先说明"));
    QCOMPARE(name(*row), QString::fromUtf8("后设"));
    QCOMPARE(tip(*row), QString::fromUtf8("后说明"));
    QCOMPARE(Find<ElidedLabelEx>("rpa_version_combo_text")->GetSecondText(), QString());
}

void TestRpaVersionItem::showsTheIconOfItsState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("normal");
    QTest::addColumn<QString>("hovered");

    const QString folder = QStringLiteral(":/images/rpa/");
    QTest::newRow("development") << 1 << folder + QStringLiteral("document_link.png")
                                 << folder + QStringLiteral("document_link_hover.png");
    QTest::newRow("gray") << 2 << folder + QStringLiteral("version_icon_beta.png")
                          << folder + QStringLiteral("version_icon_beta_hover.png");
    QTest::newRow("online") << 3 << folder + QStringLiteral("version_icon_online.png")
                            << folder + QStringLiteral("version_icon_online_hover.png");
    QTest::newRow("none") << 4 << QString() << QString();
}

void TestRpaVersionItem::showsTheIconOfItsState()
{
    QFETCH(int, state);
    QFETCH(QString, normal);
    QFETCH(QString, hovered);
    const auto picture = [](const QString& path) {
        return QPixmap(path).scaled(13, 13, Qt::KeepAspectRatio, Qt::SmoothTransformation).toImage();
    };
    const auto shown = [this] {
        return Find<QLabel>("rpa_version_combo_icon")->pixmap(Qt::ReturnByValue).toImage();
    };
    if (!normal.isEmpty())
        QVERIFY2(QFile::exists(normal) && QFile::exists(hovered), "the pictures are not in the resources");

    // when, then
    row->SetState(state);
    QCOMPARE(shown(), normal.isEmpty() ? QImage() : picture(normal));
    Send(Find<QLabel>("rpa_version_combo_icon"), QEvent::Enter);
    QCOMPARE(shown(), normal.isEmpty() ? QImage() : picture(hovered));
    Send(Find<QLabel>("rpa_version_combo_icon"), QEvent::Leave);
    QCOMPARE(shown(), normal.isEmpty() ? QImage() : picture(normal));
    row->SetState(0);
    QVERIFY(shown().isNull());
}

void TestRpaVersionItem::passesEventsOfItsIconOn()
{
    // given
    auto* icon = Find<QLabel>("rpa_version_combo_icon");
    QEvent enter(QEvent::Enter);
    enter.ignore();

    // when
    const bool eaten = !QApplication::sendEvent(icon, &enter) && enter.isAccepted();

    // then
    QVERIFY(!eaten);
}

void TestRpaVersionItem::scalesItsMeasures()
{
    auto* layout = row->findChild<QHBoxLayout*>();
    QCOMPARE(layout->contentsMargins(), QMargins(8, 0, 8, 0));
    QCOMPARE(layout->spacing(), 8);

    DpiTool::SetScale(2.0);

    QCOMPARE(layout->contentsMargins(), QMargins(16, 0, 16, 0));
    QCOMPARE(layout->spacing(), 16);
    QCOMPARE(Find<ElidedLabelEx>("rpa_version_combo_text")->sizePolicy().horizontalPolicy(),
             QSizePolicy::Expanding);
    QCOMPARE(Find<QLabel>("rpa_version_combo_icon")->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(Find<QPushButton>("rpa_version_combo_delete")->cursor().shape(), Qt::PointingHandCursor);
}

void TestRpaVersionItem::sharesItsPictureWithOtherRows()
{
    RpaVersionItem other;
    other.SetState(3);
    other.show();
    row->SetState(3);

    const auto picture = [](const QWidget& item) {
        return item.findChild<QLabel*>(QStringLiteral("rpa_version_combo_icon"))
            ->pixmap(Qt::ReturnByValue)
            .cacheKey();
    };
    QCOMPARE(picture(*row), picture(other));
}

void TestRpaVersionItem::standsInOrder()
{
    const auto* layout = row->findChild<QHBoxLayout*>();

    QCOMPARE(layout->count(), 3);
    QCOMPARE(layout->itemAt(0)->widget(), Find<QWidget>("rpa_version_combo_icon"));
    QCOMPARE(layout->itemAt(1)->widget(), Find<QWidget>("rpa_version_combo_text"));
    QCOMPARE(layout->itemAt(2)->widget(), Find<QWidget>("rpa_version_combo_delete"));
    QCOMPARE(Find<QWidget>("rpa_version_combo_delete")->focusPolicy(), Qt::NoFocus);
}

void TestRpaVersionItem::showsAnIconForItsScale()
{
    const auto shown = [this] {
        return Find<QLabel>("rpa_version_combo_icon")->pixmap(Qt::ReturnByValue).toImage();
    };
    const auto normal = [](int length) {
        return QPixmap(QStringLiteral(":/images/rpa/version_icon_beta.png"))
            .scaled(length, length, Qt::KeepAspectRatio, Qt::SmoothTransformation)
            .toImage();
    };
    row->SetState(2);
    QCOMPARE(shown(), normal(13));

    DpiTool::SetScale(2.0);
    QCOMPARE(shown(), normal(26));

    DpiTool::SetScale(1.0);
    QCOMPARE(shown(), normal(13));
}

void TestRpaVersionItem::isNotScaledAnyMoreOnceItIsGone()
{
    row->SetState(1);
    row.reset();

    DpiTool::SetScale(2.0);

    QCOMPARE(DpiTool::GetScale(), 2.0);
}

void TestRpaVersionItem::staysHiddenOutOfSight()
{
    row->SetInSight(false);
    QVERIFY(row->isHidden());

    row->show();
    QVERIFY(row->isHidden());

    row->SetInSight(true);
    QVERIFY(row->isVisible());
}

void TestRpaVersionItem::followsTheScaleBeforeItWasShown()
{
    RpaVersionItem early;
    early.SetState(2);

    DpiTool::SetScale(2.0);
    early.AdjustForDpi();
    early.show();

    QCOMPARE(early.findChild<QHBoxLayout*>()->contentsMargins(), QMargins(16, 0, 16, 0));
    const auto* icon = early.findChild<QLabel*>(QStringLiteral("rpa_version_combo_icon"));
    QCOMPARE(icon->pixmap(Qt::ReturnByValue).width(), 26);
}

void TestRpaVersionItem::offersDeletionEvenBeforeItWasShown()
{
    RpaVersionItem early;
    early.SetData(QStringLiteral("id"));
    early.SetState(1);
    RpaVersionItem left;

    Send(&early, QEvent::Enter);
    Send(&left, QEvent::Leave);

    const auto isOffered = [](const RpaVersionItem& item) {
        return !item.findChild<QPushButton*>(QStringLiteral("rpa_version_combo_delete"))->isHidden();
    };
    QVERIFY(isOffered(early));
    QVERIFY(!isOffered(left));
}

RPA_TEST_MAIN(TestRpaVersionItem)

#include "tst_rpaversionitem.moc"
