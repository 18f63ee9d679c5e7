#include <WbWebKernal/WbRichEditor.h>
