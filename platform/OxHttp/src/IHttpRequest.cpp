// SPDX-License-Identifier: Apache-2.0

#include <OxHttp/IHttpRequest.h>

IHttpRequest::IHttpRequest(QObject* parent) : QObject(parent) {}

IHttpRequest::~IHttpRequest() = default;
