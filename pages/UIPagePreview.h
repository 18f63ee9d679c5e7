#pragma once

#include <QObject>

#include <memory>

class QWidget;
class RpaUIData;

// Shows a UI page inside the hosts of the page view as its users see it: tools as buttons, parameters as
// fields, the table by its columns. It reads only; a tool button asks for its process to be run.
class UIPagePreview : public QObject
{
    Q_OBJECT

public:
    UIPagePreview(QWidget* toolHost, QWidget* paramHost, QWidget* tableHost, QObject* parent);
    ~UIPagePreview() override;

    // Null shows nothing. The page is read now and not kept.
    void Show(const RpaUIData* page);

signals:
    void SigRunProcess(const QString& processName);

private:
    std::unique_ptr<QWidget> MakeTools(const RpaUIData& page);

    QWidget* const toolHost;
    QWidget* const paramHost;
    QWidget* const tableHost;
};
