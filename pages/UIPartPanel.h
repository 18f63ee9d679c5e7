#pragma once

#include <WbBaseUI/WbBaseWidget.h>

#include <QStringList>

class QToolButton;
class QVBoxLayout;
class WbLabel;

// A collapsible panel that names what one part of a UI page (its tools, parameters or columns) holds. It
// reads only.
class UIPartPanel : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit UIPartPanel(QWidget* parent = nullptr);
    ~UIPartPanel() override;

    // title: what stands in the header; emptyText: what stands below it while there is nothing to list.
    void SetTexts(const QString& title, const QString& emptyText);

    void SetLines(const QStringList& lines);

    // Whether only the header is shown.
    bool IsShrink() const;

signals:
    void SigShrinkChanged();

private:
    void OnHeaderToggled(bool expanded);

    QToolButton* header;
    WbLabel* content;
    QString title;
    QString emptyText;
};
