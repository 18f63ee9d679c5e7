// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiTool.h>
#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QtTest>

namespace
{
// Looks after its lengths by itself.
class Follower : public QWidget, public IDpiAdapter
{
public:
    using QWidget::QWidget;
    void AdjustForDpi() override {}
};
} // namespace

class ScaledFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void scalesMarginsAndSpacings();
    void scalesLeastAndLargestSizes();
    void comesBackToTheDesign();
    void reachesIntoWhatScrolls();
    void leavesWhatFollowsByItself();
    void survivesPartsThatGo();

private:
    std::unique_ptr<QWidget> form;
    QVBoxLayout* column = nullptr;
    QGridLayout* grid = nullptr;
    QLabel* label = nullptr;
};

void ScaledFormTest::init()
{
    form = std::make_unique<QWidget>();
    column = new QVBoxLayout(form.get());
    column->setContentsMargins(24, 18, 20, 16);
    column->setSpacing(12);
    grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(4);
    column->addLayout(grid);
    label = new QLabel(form.get());
    label->setMinimumWidth(96);
    label->setMaximumHeight(40);
    form->setMinimumSize(440, 300);
    grid->addWidget(label, 0, 0);
}

void ScaledFormTest::cleanup()
{
    form.reset();
    DpiTool::SetScale(1.0);
}

void ScaledFormTest::scalesMarginsAndSpacings()
{
    DpiTool::SetScale(1.5);

    WbScaledForm::Follow(form.get());

    QCOMPARE(column->contentsMargins(), QMargins(36, 27, 30, 24));
    QCOMPARE(column->spacing(), 18);
    QCOMPARE(grid->horizontalSpacing(), 12);
    QCOMPARE(grid->verticalSpacing(), 6);
}

void ScaledFormTest::scalesLeastAndLargestSizes()
{
    WbScaledForm::Follow(form.get());

    DpiTool::SetScale(2.0);

    QCOMPARE(label->minimumSize(), QSize(192, 0));
    QCOMPARE(label->maximumSize(), QSize(QWIDGETSIZE_MAX, 80));
    QCOMPARE(form->minimumSize(), QSize(880, 600));
}

void ScaledFormTest::comesBackToTheDesign()
{
    label->setFixedSize(101, 33);
    WbScaledForm::Follow(form.get());

    for (const qreal scale : {1.25, 1.75, 2.0, 1.5, 1.0})
        DpiTool::SetScale(scale);

    QCOMPARE(column->contentsMargins(), QMargins(24, 18, 20, 16));
    QCOMPARE(label->minimumSize(), QSize(101, 33));
    QCOMPARE(label->maximumSize(), QSize(101, 33));
}

void ScaledFormTest::reachesIntoWhatScrolls()
{
    auto* scroll = new QScrollArea(form.get());
    auto* page = new QWidget;
    page->setMaximumWidth(760);
    auto* inner = new QVBoxLayout(page);
    inner->setContentsMargins(28, 20, 28, 24);
    inner->setSpacing(16);
    scroll->setWidget(page);
    WbScaledForm::Follow(form.get());

    DpiTool::SetScale(2.0);

    QCOMPARE(page->maximumWidth(), 1520);
    QCOMPARE(inner->contentsMargins(), QMargins(56, 40, 56, 48));
}

void ScaledFormTest::leavesWhatFollowsByItself()
{
    auto* follower = new Follower(form.get());
    follower->setMinimumWidth(50);
    auto* inner = new QVBoxLayout(follower);
    inner->setContentsMargins(5, 5, 5, 5);
    auto* part = new QFrame(form.get());
    part->setMinimumWidth(280);
    DpiTool::SetScale(1.5);
    WbScaledForm::Follow(part);
    WbScaledForm::Follow(form.get());

    DpiTool::SetScale(2.0);

    QCOMPARE(part->minimumWidth(), 560);
    QCOMPARE(follower->minimumWidth(), 50);
    QCOMPARE(inner->contentsMargins(), QMargins(5, 5, 5, 5));
}

void ScaledFormTest::survivesPartsThatGo()
{
    WbScaledForm::Follow(form.get());
    delete label;
    delete grid;

    DpiTool::SetScale(2.0);

    QCOMPARE(column->spacing(), 24);
}

QTEST_MAIN(ScaledFormTest)
#include "tst_scaledform.moc"
