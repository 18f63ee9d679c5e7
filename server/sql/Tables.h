// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace server
{
// What the store consists of, for whoever takes all of it somewhere else.
struct Table
{
    QString name;
    QStringList key; // its first columns
    QStringList columns;
};

// Those without app data, in an order in which each refers to former ones only; "revision" stands where its
// turn is, without "body".
const std::vector<Table>& Tables();

const QString& RevisionTable();
} // namespace server
