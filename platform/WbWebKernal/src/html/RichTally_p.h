// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

// Counts what a text asks of the layout while it is read, and says which limit it breaks first.
class RichTally
{
public:
    void AddTag();
    void AddText(int size);
    // A new block begins; what follows is a line of its own.
    void BeginParagraph();
    void EndParagraph();

    void BeginList() { lists.append(0); }
    void EndList();
    void AddListItem();

    // Cells are placed as the layout does it: a cell that spans rows takes its columns from the rows below.
    void BeginTable() { tables.append(Table()); }
    void EndTable();
    void BeginRow();
    void AddCell(int columnSpan, int rowSpan);

    void Refuse(const QString& reason);

    // Why the text cannot be laid out, in words for its reader; empty while it can.
    QString GetProblem() const { return problem; }

    qint64 GetLayoutWork() const { return work; }
    int GetParagraphs() const { return paragraphs; }
    int GetTags() const { return tags; }
    int GetCells() const { return cells; }
    int GetLongestParagraph() const { return longestParagraph; }
    int GetLongestList() const { return longestList; }

private:
    void AddWork(qint64 more);
    void AddCells(int count);

    struct Table
    {
        QVector<int> taken; // per column: rows that a cell from above still covers, this row included
        int column = 0;
        int rows = 0;
    };

    QString problem;
    QVector<int> lists;
    QVector<Table> tables;
    qint64 work = 0;
    int tags = 0;
    int textSize = 0;
    int paragraphs = 0;
    int paragraphSize = 0;
    int paragraphTags = 0;
    int longestParagraph = 0;
    int longestList = 0;
    int looseItems = 0; // items outside of any list share one
    int cells = 0;
};
