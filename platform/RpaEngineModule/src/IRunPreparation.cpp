#include <RpaEngineModule/IRunPreparation.h>

IRunPreparation::~IRunPreparation() = default;
