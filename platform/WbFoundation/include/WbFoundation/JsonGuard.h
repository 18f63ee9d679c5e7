// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/ContentLimits.h>
#include <WbFoundation/WbFoundationExport.h>

#include <QByteArray>
#include <QString>

// What JSON from a server, file, web page or child process may not exceed.
struct WBFOUNDATION_EXPORT JsonLimits
{
    int sizeBytes = ContentLimits::totalBytes;
    int depth = ContentLimits::depth;           // nested objects and arrays
    int members = ContentLimits::members;       // of all objects together
    int elements = ContentLimits::elements;     // of all arrays together
    int keyBytes = ContentLimits::nameBytes;    // of one member name, as UTF-8
    int stringBytes = ContentLimits::textBytes; // of one string, as UTF-8
};

// Pre-check of foreign JSON that is read by something other than JsonReader (which checks while it reads).
class WBFOUNDATION_EXPORT JsonGuard
{
public:
    // True when the text is one JSON value within the limits: well-formed (RFC 8259), valid UTF-8, no member
    // name twice in one object, no number beyond ±2^53. Otherwise reason, if given, says why in Chinese. One
    // pass, without recursion; any thread.
    static bool Check(const QByteArray& json, QString* reason = nullptr,
                      const JsonLimits& limits = JsonLimits());
};
