// SPDX-License-Identifier: Apache-2.0

#pragma once

// The texts that Qt itself brings: file dialogs, context menus of text fields, names of keys.
namespace QtTexts
{
// From now on they are Chinese, as everything else is. After the application object is made. Where Qt's
// translations are neither installed nor beside the program they stay English.
void Install();
} // namespace QtTexts
