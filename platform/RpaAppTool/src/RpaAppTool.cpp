#include <QtGlobal>
