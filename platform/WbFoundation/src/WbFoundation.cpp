#include <WbFoundation/IJsonParser.h>
#include <WbFoundation/Utils.h>
