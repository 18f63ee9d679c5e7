// SPDX-License-Identifier: Apache-2.0

#include "ProblemLabel_p.h"

#include <QVariant>

ProblemLabel::ProblemLabel(const QString& objectName, QWidget* parent) : QLabel(parent)
{
    setObjectName(objectName);
    setProperty("wbRole", QStringLiteral("error"));
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    Tell(QString());
}

void ProblemLabel::Tell(const QString& problem)
{
    setText(problem.isEmpty() ? QStringLiteral(" ") : problem); // without a text it would have no height
    setToolTip(problem);
    setVisible(!problem.isEmpty());
}
