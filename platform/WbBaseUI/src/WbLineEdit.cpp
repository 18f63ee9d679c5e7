#include <WbBaseUI/WbLineEdit.h>

WbLineEdit::WbLineEdit(QWidget* parent) : QLineEdit(parent) {}

WbLineEdit::~WbLineEdit() = default;
