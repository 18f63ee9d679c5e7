// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QPair>
#include <QString>
#include <QTextCursor>
#include <QVector>

// Parts of a report: title, for the user to choose by, and text.
using ReportParts = QVector<QPair<QString, QString>>;

// The parts one after the other in a document that the user edits: a part is taken out and put back as the
// user left it.
class ReportText
{
public:
    // Fills the document, which is not owned and lives longer. Once.
    void Fill(QTextDocument* document, const ReportParts& parts);

    void SetIncluded(int part, bool included);

private:
    struct Part
    {
        QTextCursor first; // stays where it is when something is written at it
        QTextCursor last;
        QString removed;
    };

    QVector<Part> parts;
};
