// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineModule/IRunPreparation.h>

IRunPreparation::~IRunPreparation() = default;
