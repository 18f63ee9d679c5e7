// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaEditorLogic/IReleaseReview.h>

#include <QObject>
#include <QPointer>
#include <QVector>

class QDialog;

// Lets the author see what goes along before the app of the editor is released or exported, and take it out.
// What is taken out of a version has to be saved before it can be released.
class ReleaseReview : public QObject, public IReleaseReview
{
    Q_OBJECT

public:
    // owner: what the dialogs stand over.
    explicit ReleaseReview(QWidget* owner);
    ~ReleaseReview() override;

    void Review(const GrayOrReleaseRequest& request,
                const std::function<void(const QString& refusal)>& decided) override;

    // Before the dialog of an export is used.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ReviewExport();
    // That of the editor; null when there is none.
    RpaAppData* GetApp() const;

    QWidget* const owner;
    QVector<QPointer<RpaAppData>> apps; // in the order in which they were loaded
    QPointer<QDialog> exporting;
};
