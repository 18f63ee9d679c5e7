// SPDX-License-Identifier: Apache-2.0

#include <OxBase/IDpiAdapter.h>

IDpiAdapter::~IDpiAdapter() = default;
