// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QString>
#include <QVariant>

class ElidedLabelEx;
class QHBoxLayout;
class QLabel;
class QPushButton;

// One version in the version drop-down: the icon of its state, its name and, under the mouse, a button to
// delete it. Only a development version with an id can be deleted. The row builds its parts when it is first
// needed on the screen, so that a long list costs little until it is looked at.
class RpaVersionItem : public WbBaseWidget, public IDpiAdapter
{
    Q_OBJECT

public:
    explicit RpaVersionItem(QWidget* parent = nullptr);
    ~RpaVersionItem() override;

    QString GetName() const { return name; }
    void SetName(const QString& value);

    // The version's id; an empty text stands for the version that a new app will get.
    QVariant GetData() const { return data; }
    void SetData(const QVariant& value) { data = value; }

    // 1 development, 2 gray release, 3 online; any other value shows no icon.
    int GetState() const { return state; }
    void SetState(int value);

    // Tool tip of the icon: the version's description.
    QString GetTip() const { return tip; }
    void SetTip(const QString& value);

    // Whether the row can be seen in its list; a row out of sight stays hidden whoever shows it.
    void SetInSight(bool value);
    void setVisible(bool visible) override;

    void AdjustForDpi() override;

signals:
    // The delete button was pressed.
    void SigDelete(QVariant data);

protected:
    bool event(QEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void SlotDelete();

private:
    void EnsureBuilt();
    void ApplyLayoutMetrics();
    void ShowIcon(bool hovered);

    int state = 0;
    QString name;
    QVariant data;
    QString tip;
    bool inSight = true;
    QLabel* iconLabel = nullptr;
    ElidedLabelEx* textLabel = nullptr;
    QPushButton* deleteButton = nullptr;
    QHBoxLayout* rowLayout = nullptr;
};
