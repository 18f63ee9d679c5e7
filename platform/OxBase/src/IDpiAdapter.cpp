#include <OxBase/IDpiAdapter.h>

IDpiAdapter::~IDpiAdapter() = default;
