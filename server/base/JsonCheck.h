#pragma once

#include <QByteArray>

namespace server {
// Why a JSON text from outside is refused; null when it may be stored and handed out again. One pass without
// building anything: it must be a JSON object in UTF-8, at most 64 deep, at most 1,000,000 members and
// elements, keys up to 256 bytes, strings up to 16 MB, no key twice in an object, no number beyond 2^53.
const char* JsonFault(const QByteArray& json);
} // namespace server
