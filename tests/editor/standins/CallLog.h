#pragma once

#include <QString>
#include <QStringList>

// What the editor did to the world around it, in order: every stand-in notes what it was asked for.
namespace CallLog
{
void Note(const QString& call);

// What was noted since the last Take().
QStringList Take();
} // namespace CallLog
