// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// A message as it can be shown: a text of any length and shape (a server's answer, say) is cut after so many
// characters and lines, and words without an end can be broken. Ordinary messages come back unchanged.
QString ShowableMessage(const QString& text, int longest, int mostLines);
