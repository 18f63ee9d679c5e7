#include <RpaCore/IRpaLifeCycle.h>

IRpaLifeCycle::~IRpaLifeCycle() = default;
