// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbComboBox.h>

#include <QPersistentModelIndex>
#include <QString>
#include <QVariant>

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTimer;
class RpaVersionItem;

// The drop-down in the editor's header that lists the app's versions and lets the user pick or delete one.
// The current row is kept here as a name and data; QComboBox's own current index plays no part.
class RpaVersionCombo : public WbComboBox
{
    Q_OBJECT

public:
    explicit RpaVersionCombo(QWidget* parent = nullptr);
    ~RpaVersionCombo() override;

    // Appends a row. tip: tool tip of its icon; versionData: the version's id; state: AppSnapshotState.
    void AddRow(const QString& name, const QString& tip, const QVariant& versionData, int state);

    // Removes every row and forgets the current one.
    void Clear();

    int GetRowCount() const;

    // Data and name of the current row.
    QVariant GetCurrentData() const { return currentData; }
    QString GetCurrentName() const { return currentName; }

    // Removes the first row of exactly this name; the current row stays as it was. Emits nothing.
    void RemoveRow(const QString& name);

    // Index of the first row with this data, or -1.
    int GetIndexOfData(const QVariant& versionData) const;

    // Data of a row; an empty text when there is no such row.
    QVariant GetDataAt(int index) const;

    // Name of a row; empty when there is no such row.
    QString GetNameAt(int index) const;

    // Makes a row current; an index without a row leaves nothing current. Emits nothing.
    void SetCurrentIndex(int index);

    void showPopup() override;
    void hidePopup() override;

signals:
    // The user picked another row than the current one.
    void SigSelectVersion(QVariant data);
    // The user pressed a row's delete button; the row is still there.
    void SigDeleteVersion(QVariant data);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void SlotItemClicked(QListWidgetItem* item);
    void SlotSelectionChanged();
    void SlotDeleteVersion(QVariant versionData);
    void SlotHideTimer();

private:
    void MakeCurrent(int index);
    void Pick(int index);
    void MarkCurrentRow();
    RpaVersionItem* RowAt(int index) const;
    void ShowCurrentName();
    void UpdateToolTip();

    QString currentName;
    QVariant currentData;
    QPersistentModelIndex currentRow; // follows its row when others are removed
    QListWidget* list = nullptr;
    QLineEdit* nameEdit;
    bool popupOpen = false;
    QTimer* hideTimer = nullptr;
};
