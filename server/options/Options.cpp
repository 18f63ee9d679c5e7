// SPDX-License-Identifier: Apache-2.0

#include "Options.h"

#include "LimitOptions.h"
#include "StorePassword.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <map>

namespace server
{
namespace
{
// With a value where it has a name for one.
QCommandLineOption Option(const char* name, const char* meaning, const char* value = nullptr,
                          const char* usual = nullptr)
{
    return {QLatin1String(name), QLatin1String(meaning), QLatin1String(value), QLatin1String(usual)};
}

struct Parser
{
    QCommandLineParser line;
    QCommandLineOption version{
        {QStringLiteral("v"), QStringLiteral("version")},
        QStringLiteral("Print the version and the databases that can be used, and end.")};
    QCommandLineOption store =
        Option("store",
               "Where everything is kept: sqlite:FILE or postgresql://USER@HOST:PORT/DATABASE. Its password "
               "comes from --store-password-file, or from PGPASSFILE.",
               "address");
    QCommandLineOption storePassword = Option(
        "store-password-file",
        "Read the password of the PostgreSQL store from the first line there; - is standard input.", "file");
    QCommandLineOption targetPassword =
        Option("target-password-file", "move: the same for the store that is moved to.", "file");
    QCommandLineOption listen =
        Option("listen", "Address and port; port 0 takes a free one.", "host:port", "127.0.0.1:8640");
    QCommandLineOption data =
        Option("data", "Folder of the SQLite store when --store is not given.", "folder");
    QCommandLineOption embedded =
        Option("embedded",
               "Serve one workstation: loopback and a free port, accounts from standard input, end with it.");
    QCommandLineOption log =
        Option("log", "Least level of log lines: debug, info, warning or error.", "level", "info");
    QCommandLineOption tlsCertificate =
        Option("tls-certificate",
               "Speak HTTPS with this certificate (PEM, followed by those that lead to its authority). It "
               "and the key are read again when they change, and on SIGHUP.",
               "file");
    QCommandLineOption tlsKey = Option("tls-key", "The certificate's key (PEM, without a password).", "file");
    QCommandLineOption metricsToken =
        Option("metrics-token-file",
               "File with a token (at least 32 characters) that lets others than this machine read /metrics.",
               "file");
    QCommandLineOption routes = Option("print-routes", "Print the route table as JSON and end.");
    QCommandLineOption name = Option("name", "account add: the name that others see.", "text");
    QCommandLineOption vender = Option("vender", "account add: id of the vendor.", "id");
    QCommandLineOption roles =
        Option("roles", "account add: author, user, administrator, joined by commas.", "list", "author");
    QCommandLineOption passwordFile =
        Option("password-file", "account add, account password: read the password from there.", "file");
    QCommandLineOption tidyEvery =
        Option("tidy-every", "How often sessions and answers that are outdated are removed, in seconds.",
               "seconds", "600");

    Parser()
    {
        line.setApplicationDescription(QStringLiteral(
            "Keeps the apps of the workstation and their versions.\n\n"
            "  rpa-version-server [options]                 serve\n"
            "  rpa-version-server account add PIN --name TEXT --vender ID [--roles LIST]\n"
            "  rpa-version-server account password|close|reopen PIN\n"
            "  rpa-version-server account roles PIN LIST\n"
            "  rpa-version-server account list\n"
            "  rpa-version-server backup FILE               also while a server uses the store\n"
            "  rpa-version-server verify                    prints what is damaged\n"
            "  rpa-version-server restore FILE              a backup, into an empty store\n"
            "  rpa-version-server move ADDRESS              everything into another, empty store\n\n"
            "Passwords are the first line of standard input or of --password-file."));
        line.addHelpOption();
        line.addOptions({version, store, storePassword, targetPassword, listen, data, embedded, log,
                         tlsCertificate, tlsKey, metricsToken, routes, name, vender, roles, passwordFile,
                         tidyEvery});
        line.addOptions(LimitOptions());
        line.addPositionalArgument(QStringLiteral("command"),
                                   QStringLiteral("What to do instead of serving."),
                                   QStringLiteral("[account|backup|verify|restore|move …]"));
    }
};

bool ReadLevel(const QString& text, LogLevel& level)
{
    static const QStringList names{QStringLiteral("debug"), QStringLiteral("info"), QStringLiteral("warning"),
                                   QStringLiteral("error")};
    const int index = names.indexOf(text);
    level = static_cast<LogLevel>(index < 0 ? 0 : index);
    return index >= 0;
}

bool ReadListen(const QString& text, Options& options)
{
    const int colon = text.lastIndexOf(QLatin1Char(':'));
    bool isPort = false;
    options.port = text.mid(colon + 1).toUShort(&isPort);
    options.host = text.left(colon);
    if (options.host.startsWith(QLatin1Char('[')) && options.host.endsWith(QLatin1Char(']')))
        options.host = options.host.mid(1, options.host.size() - 2);
    return colon > 0 && isPort;
}

bool ReadMetricsToken(const QString& fileName, QByteArray& token)
{
    constexpr int shortest = 32;
    constexpr int longest = 4096;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    token = file.read(longest).trimmed();
    return token.size() >= shortest;
}

bool ReadCommand(const QStringList& words, Options& options)
{
    static const std::map<QString, int> lengths{{QStringLiteral("backup"), 2},
                                                {QStringLiteral("verify"), 1},
                                                {QStringLiteral("restore"), 2},
                                                {QStringLiteral("move"), 2}};
    if (words.isEmpty())
        return true;
    if (words.first() == QLatin1String("account")) {
        options.accountCommand = words.mid(1);
        return words.size() >= 2;
    }
    options.storeCommand = words;
    const auto length = lengths.find(words.first());
    return length != lengths.end() && length->second == words.size();
}

QString StoreOf(const QString& given, const QString& dataDir)
{
    if (!given.isEmpty())
        return given;
    return QStringLiteral("sqlite:") + QDir(dataDir).absoluteFilePath(QStringLiteral("versions.db"));
}

// The address with the password from where the option says, if it is given.
QString WithPassword(const QString& address, const QCommandLineOption& from, const QCommandLineParser& line,
                     Options& options)
{
    if (storepassword::IsIn(address)) {
        options.error = QStringLiteral(
            "everybody on this machine can read a password on the command line: leave it out of the "
            "address, and give it by --store-password-file, --target-password-file or PGPASSFILE");
        return address;
    }
    if (!line.isSet(from))
        return address;
    if (options.embedded && line.value(from) == QLatin1String("-")) {
        options.error = QStringLiteral("--embedded has other uses for standard input");
        return address;
    }
    return storepassword::Add(address, line.value(from), options.error);
}
} // namespace

Options ReadOptions(const QStringList& arguments)
{
    Parser parser;
    parser.line.process(arguments);
    Options options;
    options.embedded = parser.line.isSet(parser.embedded);
    options.printVersion = parser.line.isSet(parser.version);
    options.printRoutes = parser.line.isSet(parser.routes);
    options.dataDir = parser.line.isSet(parser.data)
                          ? parser.line.value(parser.data)
                          : QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    options.store = StoreOf(parser.line.value(parser.store), options.dataDir);
    options.accountName = parser.line.value(parser.name);
    options.accountVender = parser.line.value(parser.vender);
    options.accountRoles = parser.line.value(parser.roles);
    if (!ReadLevel(parser.line.value(parser.log), options.logLevel))
        options.error = QStringLiteral("--log takes debug, info, warning or error");
    if (!ReadListen(parser.line.value(parser.listen), options))
        options.error = QStringLiteral("--listen takes HOST:PORT");
    if (const QString why = ReadLimits(parser.line, options); !why.isEmpty())
        options.error = why;
    options.tls = {parser.line.value(parser.tlsCertificate), parser.line.value(parser.tlsKey)};
    if (options.tls.certificate.isEmpty() != options.tls.key.isEmpty())
        options.error = QStringLiteral("--tls-certificate and --tls-key need each other");
    if (options.embedded && !options.tls.key.isEmpty())
        options.error = QStringLiteral("--embedded serves this machine only and needs no --tls-certificate");
    if (parser.line.isSet(parser.metricsToken) &&
        !ReadMetricsToken(parser.line.value(parser.metricsToken), options.metricsToken))
        options.error =
            QStringLiteral("--metrics-token-file takes a readable file with at least 32 characters in it");
    if (options.embedded && !parser.line.isSet(parser.listen))
        options.port = 0;
    options.passwordFile = parser.line.value(parser.passwordFile);
    options.tidyEvery = std::chrono::seconds(parser.line.value(parser.tidyEvery).toInt());
    if (options.tidyEvery.count() < 1)
        options.error = QStringLiteral("--tidy-every takes a number of seconds");
    if (!ReadCommand(parser.line.positionalArguments(), options))
        options.error = QStringLiteral("unknown command; see --help");
    if (!options.error.isEmpty())
        return options;
    options.store = WithPassword(options.store, parser.storePassword, parser.line, options);
    if (options.storeCommand.value(0) == QLatin1String("move"))
        options.storeCommand[1] =
            WithPassword(options.storeCommand.at(1), parser.targetPassword, parser.line, options);
    return options;
}
} // namespace server
