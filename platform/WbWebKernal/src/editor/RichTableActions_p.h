// SPDX-License-Identifier: Apache-2.0

#pragma once

class QMenu;
class RichTextView;

// Fills the menu with the acts on tables; those on rows and columns are available inside a table only.
void FillTableMenu(QMenu& menu, RichTextView& view);
