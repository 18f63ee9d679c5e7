// SPDX-License-Identifier: Apache-2.0

// Fill, rebuild and popup of the version drop-down beside a bare list of the same number of row widgets.

#include "RpaVersionCombo.h"

#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTextStream>

#include <algorithm>
#include <memory>

namespace
{

struct Figures
{
    double fillMs = 0;
    double firstPopupMs = 0;
    double secondPopupMs = 0;
    double rebuildMs = 0;
    double popupAfterRebuildMs = 0;
};

void Settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

template <typename Act>
double Measure(Act act)
{
    QElapsedTimer timer;
    timer.start();
    act();
    Settle();
    return double(timer.nsecsElapsed()) / 1e6;
}

class VersionCombo
{
public:
    VersionCombo() { combo.resize(200, 30); }

    void Fill(int rows)
    {
        for (int i = 0; i < rows; ++i) {
            combo.AddRow(QStringLiteral("版本%1").arg(i), QStringLiteral("描述"), QString::number(i),
                         1 + i % 3);
        }
        combo.SetCurrentIndex(combo.GetIndexOfData(QString::number(rows / 2)));
    }
    void Clear() { combo.Clear(); }

    RpaVersionCombo combo;
};

// What the drop-down would be without care: a list whose rows are four plain widgets each.
class BareList
{
public:
    BareList()
    {
        list = new QListWidget(&combo);
        combo.setModel(list->model());
        combo.setView(list);
        combo.resize(200, 30);
        icon = QPixmap(13, 13);
        icon.fill(Qt::blue);
    }

    void Fill(int rows)
    {
        for (int i = 0; i < rows; ++i) {
            auto* row = new QWidget(list);
            auto* layout = new QHBoxLayout(row);
            auto* iconLabel = new QLabel(row);
            iconLabel->setPixmap(icon);
            layout->addWidget(iconLabel);
            layout->addWidget(new QLabel(QStringLiteral("版本%1").arg(i), row));
            layout->addWidget(new QPushButton(row));
            list->setItemWidget(new QListWidgetItem(list), row);
        }
    }
    void Clear() { list->clear(); }

    QComboBox combo;
    QListWidget* list;
    QPixmap icon;
};

template <typename Subject>
Figures RunOnce(int rows)
{
    Subject subject;
    subject.combo.show();
    Settle();
    Figures figures;
    figures.fillMs = Measure([&] { subject.Fill(rows); });
    figures.firstPopupMs = Measure([&] { subject.combo.showPopup(); });
    subject.combo.hidePopup();
    Settle();
    figures.secondPopupMs = Measure([&] { subject.combo.showPopup(); });
    subject.combo.hidePopup();
    Settle();
    figures.rebuildMs = Measure([&] {
        subject.Clear();
        subject.Fill(rows);
    });
    figures.popupAfterRebuildMs = Measure([&] { subject.combo.showPopup(); });
    subject.combo.hidePopup();
    Settle();
    return figures;
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

template <typename Subject>
void Report(QTextStream& out, const QString& name, int rows)
{
    const int rounds = rows >= 10000 ? 3 : 7;
    QVector<double> columns[5];
    for (int i = 0; i < rounds; ++i) {
        const Figures figures = RunOnce<Subject>(rows);
        columns[0].append(figures.fillMs);
        columns[1].append(figures.firstPopupMs);
        columns[2].append(figures.secondPopupMs);
        columns[3].append(figures.rebuildMs);
        columns[4].append(figures.popupAfterRebuildMs);
    }
    out << QStringLiteral("%1 %2").arg(name, -14).arg(rows, 6);
    for (const auto& column : columns)
        out << QStringLiteral(" %1").arg(Median(column), 12, 'f', 2);
    out << Qt::endl;
}

const QStringList defaultSizes = {QStringLiteral("10"), QStringLiteral("100"), QStringLiteral("1000"),
                                  QStringLiteral("10000")};

} // namespace

// bench_version_combo [ROWS ...]
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QTextStream out(stdout);
    out << "median ms        rows         fill    1st popup    2nd popup      rebuild  popup after"
        << Qt::endl;
    const QStringList given = app.arguments().mid(1);
    for (const QString& size : given.isEmpty() ? defaultSizes : given) {
        const int rows = size.toInt();
        Report<VersionCombo>(out, QStringLiteral("version combo"), rows);
        Report<BareList>(out, QStringLiteral("bare list"), rows);
    }
    return 0;
}
