// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BodyWork_p.h"

#include <WbHttpModule/WbHttpAnswer.h>
#include <WbHttpModule/WbHttpRequest.h>

#include <chrono>
#include <curl/curl.h>
#include <memory>

// One request on its way, from Send() to its answer. Lives on the worker thread.
class Transfer
{
public:
    using Clock = std::chrono::steady_clock;

    enum class Stage
    {
        Preparing, // its body is encoded and hashed
        Waiting,   // for a free place on the network
        Running,
        Checking, // its answer is verified
    };

    Transfer(quint64 id, const WbHttpRequest& request, Clock::time_point sentAt);
    ~Transfer();

    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    quint64 GetId() const { return id; }
    const WbHttpRequest& GetRequest() const { return request; }
    QByteArray GetSentDigest() const { return prepared.digest; }

    Stage GetStage() const { return stage; }
    void SetStage(Stage value) { stage = value; }

    void SetPrepared(const PreparedBody& body);
    bool IsBodyTooLarge() const;

    // Makes the curl handle and starts the inactivity clock.
    CURL* Start();
    CURL* GetHandle() const { return handle.get(); }

    // Running, and not all of the body has left.
    bool IsSending() const;

    // The answer as it stands when curl is done with the request.
    WbHttpAnswer Finish(CURLcode code);

    // When the request must be answered, as far as is known now.
    Clock::time_point GetDeadline() const;

private:
    struct EasyCleanup
    {
        void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
    };
    struct ListCleanup
    {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    static size_t OnHeader(char* data, size_t size, size_t count, void* self);
    static size_t OnBody(char* data, size_t size, size_t count, void* self);
    static size_t OnUpload(char* data, size_t size, size_t count, void* self);
    static int OnSend(void* self, char* remoteAddress, char* ownAddress, int remotePort, int ownPort);

    void SetSafetyOptions();
    void SetTarget();
    void SetBodyOptions();
    void SetHeaders();
    void AddHeader(const QByteArray& line);
    bool TakeHeaderLine(const QByteArray& line);
    bool TakeHeader(const QByteArray& name, const QByteArray& value);
    bool TakeBody(const char* data, size_t bytes);
    bool Refuse(WbHttpError error);
    WbHttpError ErrorOf(CURLcode code) const;
    WbHttpError FramingError() const;
    void Touch() { lastActivity = Clock::now(); }

    const quint64 id;
    WbHttpRequest request;
    const Clock::time_point sentAt;
    Clock::time_point lastActivity;
    Stage stage = Stage::Preparing;
    PreparedBody prepared;
    bool hasLeft = false; // the request was handed to a connection
    qint64 uploaded = 0;
    qint64 announcedBytes = 0;
    qint64 headerBytes = 0;
    bool isFramed = false; // the answer says where it ends
    WbHttpError refusal = WbHttpError::None;
    WbHttpAnswer answer;
    std::unique_ptr<curl_slist, ListCleanup> headerList;
    std::unique_ptr<CURL, EasyCleanup> handle;
};
