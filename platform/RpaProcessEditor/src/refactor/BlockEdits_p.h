// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "StatementRange_p.h"

class ProcessEdits;

// Blocks put around statements and taken away from them, one undo step each. What cannot be done gives the
// reason, in Chinese, and changes nothing.
namespace BlockEdits
{
// Puts the statements into a new block of the command, with the branch that it cannot be without. block
// becomes the id of the new one.
QString Wrap(ProcessEdits& edits, RpaProcess& process, const QStringList& ids, const QString& command,
             QString& block);

// Puts the statements inside a block in its place. Its branches go with it; they must be empty. What a
// disabled block held is disabled.
QString Unwrap(ProcessEdits& edits, RpaProcess& process, const QStringList& ids);
} // namespace BlockEdits
