// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineModule/RpaProcessRelatedUIControler.h>

#include <QtTest>

#include <memory>

namespace
{
RpaProcessRelatedUIControler* Controler()
{
    return RpaProcessRelatedUIControler::Instance();
}
} // namespace

class ProcessRelatedUIControlerTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Controler()->SetRunning(false); }

    void disablesWidgetsDuringARunAndGivesEachItsOwnStateBack()
    {
        QWidget enabled;
        QWidget disabled;
        disabled.setEnabled(false);
        Controler()->AddToControl(&enabled);
        Controler()->AddToControl(&disabled);

        Controler()->SetRunning(true);
        QVERIFY(!enabled.isEnabled());
        QVERIFY(!disabled.isEnabled());
        Controler()->SetRunning(false);

        QVERIFY(enabled.isEnabled());
        QVERIFY(!disabled.isEnabled());
    }

    void aDisabledParentIsNotTakenForTheWidgetsOwnState()
    {
        QWidget parent;
        QWidget child(&parent);
        parent.setEnabled(false);
        Controler()->AddToControl(&child);

        Controler()->SetRunning(true);
        Controler()->SetRunning(false);
        parent.setEnabled(true);

        QVERIFY(child.isEnabled());
    }

    void aWidgetAddedDuringARunIsDisabledAtOnce()
    {
        QWidget widget;
        Controler()->SetRunning(true);

        Controler()->AddToControl(&widget);

        QVERIFY(!widget.isEnabled());
        Controler()->SetRunning(false);
        QVERIFY(widget.isEnabled());
    }

    void aWidgetRemovedDuringARunGetsItsStateBack()
    {
        QWidget widget;
        Controler()->AddToControl(&widget);
        Controler()->SetRunning(true);

        Controler()->RemoveFromControl(&widget);

        QVERIFY(widget.isEnabled());
    }

    void aWidgetAddedTwiceKeepsItsState()
    {
        QWidget widget;
        Controler()->AddToControl(&widget);
        Controler()->SetRunning(true);
        Controler()->AddToControl(&widget);

        Controler()->SetRunning(false);

        QVERIFY(widget.isEnabled());
    }

    void aWidgetDestroyedDuringARunIsForgotten()
    {
        auto widget = std::make_unique<QWidget>();
        Controler()->AddToControl(widget.get());
        Controler()->SetRunning(true);

        widget.reset();
        Controler()->SetRunning(false);

        QVERIFY(!Controler()->IsRunning());
    }
};

QTEST_MAIN(ProcessRelatedUIControlerTest)
#include "tst_processrelateduicontroler.moc"
