// SPDX-License-Identifier: Apache-2.0

#include "PackageJob_p.h"
#include "PackageRules_p.h"

#include <RpaPackage/PackageService.h>

#include <QMetaMethod>
#include <QQueue>

#include <algorithm>

class PackageService::Private
{
public:
    struct Order
    {
        PackageJob::Kind kind = PackageJob::Install;
        bool isAnnounced = false; // by SigInstallFinished
        QString appId;
        QString configuration;
        QVector<PackageState> states;
        QString problem; // why it need not even be tried
    };

    explicit Private(PackageService& service) : q(service) {}

    void SetConfiguration(const QString& json);
    Order NewOrder(PackageJob::Kind kind) const;
    void Add(const Order& order);
    void StartNext();
    void EndCurrent(const QVector<PackageState>& states, const QString& problem);
    void Announce(const Order& order, const QString& problem);
    void EndAll(const QString& problem);

    PackageService& q;
    PackageSettings settings;
    QString appId;
    QString configuration;
    QString listProblem; // why the configuration cannot be read
    QVector<PackageState> states;
    bool isCut = false;
    QString cutApp;
    QQueue<Order> orders; // the first one is under way when there is a job
    std::unique_ptr<PackageJob> job;
};

void PackageService::Private::SetConfiguration(const QString& json)
{
    if (json == configuration && !json.isEmpty())
        return;
    configuration = json;
    listProblem.clear();
    PackageRules::ReadList(json, &states, &listProblem);
    emit q.SigStatesChanged();
}

PackageService::Private::Order PackageService::Private::NewOrder(PackageJob::Kind kind) const
{
    Order order;
    order.kind = kind;
    order.appId = appId;
    order.configuration = configuration;
    order.states = states;
    order.problem = listProblem;
    if (order.problem.isEmpty() && settings.dataFolder.isEmpty() && kind == PackageJob::Install &&
        !states.isEmpty())
        order.problem = QStringLiteral("此工作站没有设置存放扩展包的文件夹");
    return order;
}

void PackageService::Private::Add(const Order& order)
{
    orders.enqueue(order);
    if (order.kind == PackageJob::Install)
        emit q.SigPendingChanged();
    // Never inside the caller's own call.
    QMetaObject::invokeMethod(
        &q, [this] { StartNext(); }, Qt::QueuedConnection);
}

void PackageService::Private::StartNext()
{
    if (job || orders.isEmpty())
        return;
    const Order order = orders.head(); // a copy: the queue moves on while it is used
    if (!order.problem.isEmpty() || order.states.isEmpty()) {
        EndCurrent(order.states, order.problem);
        return;
    }
    job = std::make_unique<PackageJob>(order.kind, settings, order.appId, order.states);
    connect(
        job.get(), &PackageJob::SigEnded, &q,
        [this](const QVector<PackageState>& found, const QString& problem) { EndCurrent(found, problem); });
    if (order.kind == PackageJob::Install) {
        connect(job.get(), &PackageJob::SigProgress, &q, &PackageService::SigProgress);
        connect(job.get(), &PackageJob::SigOutput, &q, &PackageService::SigOutput);
    }
    job->Start();
}

void PackageService::Private::EndCurrent(const QVector<PackageState>& found, const QString& problem)
{
    // The job is on the stack of its own signal.
    if (job)
        job.release()->deleteLater();
    const Order order = orders.dequeue();
    if (order.configuration == configuration && order.appId == appId && order.problem.isEmpty()) {
        states = found;
        emit q.SigStatesChanged();
    }
    if (order.kind == PackageJob::Install && order.appId == cutApp)
        isCut = false;
    Announce(order, problem);
    QMetaObject::invokeMethod(
        &q, [this] { StartNext(); }, Qt::QueuedConnection);
}

void PackageService::Private::Announce(const Order& order, const QString& problem)
{
    if (order.kind != PackageJob::Install)
        return;
    emit q.SigPackageFoldersChanged();
    emit q.SigPendingChanged();
    emit q.SigInstallationEnded(problem);
    if (order.isAnnounced)
        emit q.SigInstallFinished();
}

// Those that are added by whoever hears of an end are not among them.
void PackageService::Private::EndAll(const QString& problem)
{
    job.reset();
    QQueue<Order> ended;
    ended.swap(orders);
    while (!ended.isEmpty())
        Announce(ended.dequeue(), problem);
}

PackageService::PackageService(QObject* parent) : IPackageService(parent), d(std::make_unique<Private>(*this))
{
}

PackageService::~PackageService() = default;

void PackageService::SetSettings(const PackageSettings& settings)
{
    d->settings = settings;
    emit SigPackageFoldersChanged();
}

PackageSettings PackageService::GetSettings() const
{
    return d->settings;
}

void PackageService::SetApp(const QString& appId)
{
    if (appId == d->appId)
        return;
    d->appId = appId;
    d->configuration.clear();
    d->listProblem.clear();
    d->states.clear();
    emit SigStatesChanged();
    emit SigPackageFoldersChanged();
}

QString PackageService::GetApp() const
{
    return d->appId;
}

void PackageService::Install(const QString& json)
{
    d->SetConfiguration(json);
    Private::Order order = d->NewOrder(PackageJob::Install);
    order.isAnnounced = true;
    d->Add(order);
}

void PackageService::InstallCurrent()
{
    d->Add(d->NewOrder(PackageJob::Install));
}

void PackageService::Reset(const QString& json)
{
    d->SetConfiguration(json);
}

void PackageService::Save(const QString& json)
{
    d->SetConfiguration(json);
    emit SigSaveConfig(json);
}

bool PackageService::IsListTaken() const
{
    return isSignalConnected(QMetaMethod::fromSignal(&IPackageService::SigSaveConfig));
}

QString PackageService::GetConfiguration() const
{
    return d->configuration;
}

QVector<PackageState> PackageService::GetStates() const
{
    return d->states;
}

void PackageService::Refresh()
{
    d->Add(d->NewOrder(PackageJob::Look));
}

QStringList PackageService::GetPackageFolders() const
{
    if (d->settings.dataFolder.isEmpty())
        return {};
    return PackageEnvironment(d->settings.dataFolder, d->appId).GetPackageFolders();
}

int PackageService::GetPendingCount() const
{
    int count = 0;
    for (const Private::Order& order : qAsConst(d->orders))
        count += order.kind == PackageJob::Install ? 1 : 0;
    return count;
}

bool PackageService::IsAwaited() const
{
    return std::any_of(d->orders.cbegin(), d->orders.cend(),
                       [](const Private::Order& order) { return order.isAnnounced; });
}

void PackageService::Cancel()
{
    if (GetPendingCount() == 0)
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (GetPendingCount() == 0)
                return;
            d->isCut = true;
            d->cutApp = d->appId;
            d->EndAll(QStringLiteral("已取消安装扩展包"));
        },
        Qt::QueuedConnection);
}

bool PackageService::IsCut() const
{
    return d->isCut && d->cutApp == d->appId;
}

void PackageService::Shutdown()
{
    do
        d->EndAll(QStringLiteral("工作站正在关闭，没有继续安装"));
    while (!d->orders.isEmpty());
}
