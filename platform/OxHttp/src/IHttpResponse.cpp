#include <OxHttp/IHttpResponse.h>

IHttpResponse::IHttpResponse(QObject* parent) : QObject(parent) {}

IHttpResponse::~IHttpResponse() = default;
