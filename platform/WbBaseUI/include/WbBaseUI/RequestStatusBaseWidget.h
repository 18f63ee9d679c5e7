// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QWidget>

#include <memory>

// How the request stands whose answer the other widget shows.
enum class RequestStatus
{
    Loading = 0,
    Failed = 1,
    Succeeded = 2,
};

// Stands in for another widget while that widget's content is requested: a busy sign while loading, the
// reason and a refresh button after a failure; it hides itself and shows the other widget after success.
class WBBASEUI_EXPORT RequestStatusBaseWidget : public QWidget
{
    Q_OBJECT

public:
    explicit RequestStatusBaseWidget(QWidget* parent = nullptr);
    ~RequestStatusBaseWidget() override;

    // A widget that is shown only in the succeeded state. Before the first SetStatus nothing is hidden or
    // shown but the widget itself, which is hidden.
    void AddSucceedWidget(QWidget* widget);

    // Succeeded before the first SetStatus(), which shows what belongs to the state.
    RequestStatus GetStatus() const;
    void SetStatus(RequestStatus status);

    // Reason shown in the failed state; plain text.
    void SetErrorMsg(const QString& message);

signals:
    // The user pressed the refresh button.
    void SigRefresh();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
