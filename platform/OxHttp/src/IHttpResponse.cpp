// SPDX-License-Identifier: Apache-2.0

#include <OxHttp/IHttpResponse.h>

IHttpResponse::IHttpResponse(QObject* parent) : QObject(parent) {}

IHttpResponse::~IHttpResponse() = default;
