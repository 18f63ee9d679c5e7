// SPDX-License-Identifier: Apache-2.0

#include "VersionDetails.h"

#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QVBoxLayout>

namespace
{
WbLabel* Line(const char* objectName, bool isHint)
{
    auto* label = new WbLabel;
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText); // it holds foreign words
    label->setWordWrap(true);
    label->setProperty("hint", isHint);
    return label;
}
} // namespace

VersionDetails::VersionDetails(int mostSaves, QWidget* parent)
    : QWidget(parent), most(mostSaves), labelName(Line("labelVersionName", false)),
      labelState(Line("labelVersionState", false)), labelDescription(Line("labelVersionDescription", true)),
      layout(new QVBoxLayout(this))
{
    QFont bold = labelName->font();
    bold.setBold(true);
    labelName->setFont(bold);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(labelName);
    layout->addWidget(labelState);
    layout->addWidget(labelDescription);
    WbScaledForm::Follow(this);
}

void VersionDetails::Show(const VersionFacts& version, const QString& progress, DateLanguage language)
{
    labelName->setText(VersionWords::Name(version));
    labelState->setText(VersionWords::State(version, language));
    labelDescription->setText(QStringLiteral("描述：%1").arg(version.description));
    labelDescription->setVisible(!version.description.isEmpty());
    ShowSaves(version, progress, language);
}

void VersionDetails::ShowSaves(const VersionFacts& version, const QString& progress, DateLanguage language)
{
    delete list;
    list = new QWidget(this);
    auto* lines = new QVBoxLayout(list);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(4);
    const auto add = [lines](const char* name, bool isHint, const QString& text) {
        WbLabel* const line = Line(name, isHint);
        line->setText(text);
        lines->addWidget(line);
    };
    if (version.saves.isEmpty() && !progress.isEmpty())
        add("labelVersionProgress", true, progress);
    for (int i = 0; i < qMin(most, version.saves.size()); ++i) {
        const VersionServiceSave& save = version.saves.at(i);
        const QString caption = i == 0 ? QStringLiteral("最近保存：") : QStringLiteral("更早：");
        add("labelVersionSave", i > 0, caption + VersionWords::Save(save, language));
        if (!save.note.isEmpty())
            add("labelVersionNote", i > 0, QStringLiteral("说明：") + save.note);
    }
    layout->addWidget(list);
    list->show(); // at once: whoever asks for the height means it
}
