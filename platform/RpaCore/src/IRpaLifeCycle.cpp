// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/IRpaLifeCycle.h>

IRpaLifeCycle::~IRpaLifeCycle() = default;
