// SPDX-License-Identifier: Apache-2.0

#include "RequestRules_p.h"
#include "TransferWorker_p.h"
#include "TransportTexts_p.h"

#include <QMutexLocker>

#include <algorithm>

namespace
{
// More would only compete for the same line.
constexpr int runningAtMost = 16;
// Worked on in passing up to here: below a millisecond.
constexpr qint64 smallBodyBytes = 256 * 1024;
constexpr int poolThreads = 2;
constexpr auto longestWait = std::chrono::milliseconds(60000);
// Windows tells only once that a connection can take more; a notice that is missed must not stop an upload.
constexpr auto longestWaitWhileSending = std::chrono::milliseconds(20);

void InitCurlOnce()
{
    static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
    Q_UNUSED(code)
}

CURLM* MakeMulti()
{
    InitCurlOnce();
    return curl_multi_init();
}
} // namespace

TransferWorker::TransferWorker(Report value) : report(std::move(value)), multi(MakeMulti())
{
    pool.setMaxThreadCount(poolThreads);
    thread.reset(QThread::create([this] { Run(); }));
    thread->start();
}

TransferWorker::~TransferWorker()
{
    {
        const QMutexLocker lock(&mutex);
        stopping = true;
    }
    curl_multi_wakeup(multi);
    thread->wait();
    pool.clear();
    pool.waitForDone();
    while (!transfers.empty())
        Erase(transfers.begin());
    curl_multi_cleanup(multi);
}

void TransferWorker::Add(quint64 id, const WbHttpRequest& request)
{
    const auto sentAt = Transfer::Clock::now();
    Post([this, id, request, sentAt] {
        auto& slot = transfers[id];
        slot = std::make_unique<Transfer>(id, request, sentAt);
        Prepare(slot.get());
    });
}

void TransferWorker::Drop(quint64 id)
{
    Post([this, id] {
        const auto position = transfers.find(id);
        if (position != transfers.end())
            Erase(position);
    });
}

void TransferWorker::Post(Command command)
{
    {
        const QMutexLocker lock(&mutex);
        commands.push_back(std::move(command));
    }
    curl_multi_wakeup(multi);
}

void TransferWorker::Run()
{
    for (;;) {
        RunCommands();
        {
            const QMutexLocker lock(&mutex);
            if (stopping)
                return;
        }
        StartWaiting();
        int stillRunning = 0;
        curl_multi_perform(multi, &stillRunning);
        CollectFinished();
        ExpireOverdue();
        curl_multi_poll(multi, nullptr, 0, MillisecondsToWait(), nullptr);
    }
}

void TransferWorker::RunCommands()
{
    std::vector<Command> taken;
    {
        const QMutexLocker lock(&mutex);
        taken.swap(commands);
    }
    for (const auto& command : taken)
        command();
}

void TransferWorker::RunJob(qint64 bytes, Command job)
{
    if (bytes <= smallBodyBytes)
        job();
    else
        pool.start(std::move(job));
}

void TransferWorker::Prepare(Transfer* transfer)
{
    const quint64 id = transfer->GetId();
    const WbHttpRequest& request = transfer->GetRequest();
    if (!MaySend(request)) {
        End(id, FailedAnswer(WbHttpError::BadRequest));
        return;
    }
    const qint64 bytes = std::max(request.body.size(), request.bodyText.size());
    RunJob(bytes, [this, id, request] {
        const PreparedBody body = PrepareBody(request);
        Post([this, id, body] { OnPrepared(id, body); });
    });
}

void TransferWorker::OnPrepared(quint64 id, const PreparedBody& body)
{
    Transfer* transfer = Find(id);
    if (!transfer)
        return;
    if (!body.problem.isEmpty()) {
        WbHttpAnswer refused = FailedAnswer(WbHttpError::BadRequest);
        refused.errorText = body.problem;
        End(id, refused);
        return;
    }
    transfer->SetPrepared(body);
    transfer->SetStage(Transfer::Stage::Waiting);
    if (transfer->IsBodyTooLarge())
        End(id, FailedAnswer(WbHttpError::TooLarge));
}

void TransferWorker::StartWaiting()
{
    for (auto position = transfers.begin(); position != transfers.end() && runningCount < runningAtMost;) {
        Transfer* transfer = (position++)->second.get();
        if (transfer->GetStage() != Transfer::Stage::Waiting)
            continue;
        CURL* handle = transfer->Start();
        if (!handle || curl_multi_add_handle(multi, handle) != CURLM_OK) {
            transfer->SetStage(Transfer::Stage::Waiting);
            End(transfer->GetId(), FailedAnswer(WbHttpError::CannotConnect));
            continue;
        }
        ++runningCount;
    }
}

void TransferWorker::CollectFinished()
{
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        CURL* handle = message->easy_handle;
        const CURLcode code = message->data.result;
        Transfer* transfer = nullptr;
        curl_easy_getinfo(handle, CURLINFO_PRIVATE, &transfer);
        curl_multi_remove_handle(multi, handle);
        --runningCount;
        transfer->SetStage(Transfer::Stage::Checking);
        Check(transfer, transfer->Finish(code));
    }
}

void TransferWorker::Check(Transfer* transfer, const WbHttpAnswer& answer)
{
    const quint64 id = transfer->GetId();
    if (answer.error != WbHttpError::None) {
        End(id, answer);
        return;
    }
    const WbHttpExpectation expectation = transfer->GetRequest().expectation;
    RunJob(answer.body.size(), [this, id, expectation, answer] {
        WbHttpAnswer verified = answer;
        VerifyAnswer(expectation, &verified);
        Post([this, id, verified] { End(id, verified); });
    });
}

void TransferWorker::ExpireOverdue()
{
    const auto now = Transfer::Clock::now();
    for (auto position = transfers.begin(); position != transfers.end();) {
        const Transfer& transfer = *(position++)->second;
        if (transfer.GetDeadline() <= now)
            End(transfer.GetId(), FailedAnswer(WbHttpError::TimedOut));
    }
}

int TransferWorker::MillisecondsToWait() const
{
    auto wait = longestWait;
    const auto now = Transfer::Clock::now();
    for (const auto& [id, transfer] : transfers) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(transfer->GetDeadline() - now);
        wait = std::clamp(left, std::chrono::milliseconds(0), wait);
        if (transfer->IsSending())
            wait = std::min(wait, longestWaitWhileSending);
    }
    return int(wait.count());
}

void TransferWorker::End(quint64 id, WbHttpAnswer answer)
{
    const auto position = transfers.find(id);
    if (position == transfers.end())
        return;
    answer.sentDigest = position->second->GetSentDigest();
    Erase(position);
    report(id, answer);
}

void TransferWorker::Erase(Transfers::iterator position)
{
    Transfer& transfer = *position->second;
    if (transfer.GetStage() == Transfer::Stage::Running) {
        curl_multi_remove_handle(multi, transfer.GetHandle());
        --runningCount;
    }
    transfers.erase(position);
}

Transfer* TransferWorker::Find(quint64 id) const
{
    const auto position = transfers.find(id);
    return position == transfers.end() ? nullptr : position->second.get();
}
