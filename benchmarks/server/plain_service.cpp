// SPDX-License-Identifier: Apache-2.0

// The measure for bench_server: the least that a service over Boost.Beast and SQLite can do. A thread per
// connection, a database connection per thread, one durable commit per save.

#include <QByteArray>
#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <atomic>
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <cstdio>
#include <mutex>
#include <thread>

namespace
{
namespace beast = boost::beast;
namespace http = beast::http;
using tcp = boost::asio::ip::tcp;

class Database
{
public:
    Database(const QString& file, const QString& name)
        : database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name))
    {
        database.setDatabaseName(file);
        database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=15000"));
        if (!database.open())
            qFatal("%s", qPrintable(database.lastError().text()));
        QSqlQuery query(database);
        query.exec(QStringLiteral("PRAGMA page_size=16384"));
        query.exec(QStringLiteral("PRAGMA journal_mode=DELETE"));
        query.exec(QStringLiteral("PRAGMA synchronous=EXTRA"));
    }

    QSqlDatabase database;
};

void Fill(const QString& file)
{
    Database filled(file, QStringLiteral("fill"));
    QSqlQuery query(filled.database);
    query.exec(QStringLiteral("CREATE TABLE body (id INTEGER PRIMARY KEY, data BLOB)"));
    query.exec(QStringLiteral("CREATE TABLE head (id INTEGER PRIMARY KEY, name TEXT, description TEXT)"));
    for (int i = 0; i < 20; ++i)
        query.exec(
            QStringLiteral("INSERT INTO head (name, description) VALUES ('version', 'a description of it')"));
    query.prepare(QStringLiteral("INSERT INTO body (id, data) VALUES (1, ?)"));
    query.addBindValue(QByteArray(1000000, 'x'));
    query.exec();
}

std::string List(QSqlQuery& query)
{
    query.exec();
    std::string text = "[";
    while (query.next())
        text += "{\"id\":" + query.value(0).toByteArray().toStdString() + ",\"name\":\"" +
                query.value(1).toByteArray().toStdString() + "\",\"description\":\"" +
                query.value(2).toByteArray().toStdString() + "\"},";
    query.finish();
    text.back() = ']';
    return text;
}

void Serve(tcp::socket socket, const QString& file, int number)
{
    static std::mutex writer;
    Database mine(file, QString::number(number));
    QSqlQuery list(mine.database);
    list.setForwardOnly(true);
    list.prepare(QStringLiteral("SELECT id, name, description FROM head"));
    QSqlQuery read(mine.database);
    read.setForwardOnly(true);
    read.prepare(QStringLiteral("SELECT data FROM body WHERE id = 1"));
    QSqlQuery save(mine.database);
    save.prepare(QStringLiteral("INSERT INTO body (data) VALUES (?)"));

    beast::flat_buffer buffer;
    beast::error_code ec;
    while (!ec) {
        http::request<http::string_body> request;
        http::read(socket, buffer, request, ec);
        if (ec)
            return;
        http::response<http::string_body> response;
        if (request.target() == "/list") {
            response.body() = List(list);
        } else if (request.target() == "/read") {
            read.exec();
            read.next();
            response.body() = read.value(0).toByteArray().toStdString();
            read.finish();
        } else {
            const std::lock_guard lock(writer);
            save.bindValue(0, QByteArray::fromStdString(request.body()));
            if (!save.exec())
                response.result(500);
        }
        response.prepare_payload();
        http::write(socket, response, ec);
    }
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const QString file = QString::fromLocal8Bit(argv[1]);
    Fill(file);
    boost::asio::io_context context;
    tcp::acceptor acceptor(context, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0));
    std::printf("%d\n", acceptor.local_endpoint().port());
    std::fflush(stdout);
    for (int number = 0;; ++number) {
        tcp::socket socket = acceptor.accept();
        socket.set_option(tcp::no_delay(true));
        std::thread(Serve, std::move(socket), file, number).detach();
    }
}
