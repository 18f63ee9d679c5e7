// SPDX-License-Identifier: Apache-2.0

#include "WholeCharacters_p.h"

#include <WbBaseUI/WbLineEdit.h>

WbLineEdit::WbLineEdit(QWidget* parent) : QLineEdit(parent)
{
    WholeCharacters::Keep(this);
}
