#include "StackOnCrash.h"

void StackOnCrash::Install() {}
