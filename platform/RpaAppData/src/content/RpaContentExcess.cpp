// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaContentExcess.h>
#include <WbFoundation/ContentLimits.h>
#include <WbFoundation/JsonReader.h>

#include <QVector>

namespace
{
constexpr int bytesPerMegabyte = 1024 * 1024;
constexpr int longestShownName = 20;

// One step from the whole to a value: the member's name, or the place in an array; and what the object there
// calls itself.
struct Step
{
    QByteArray key;
    int index = -1;
    QString name;
};
using Path = QVector<Step>;

// Looks for the first text that is too long. The path leads to it afterwards.
class LongTextSearch
{
public:
    explicit LongTextSearch(const QByteArray& json) : reader(json, TextsOfAnyLength()) {}

    bool Run() { return Enters() && !reader.HasError(); }
    const Path& GetPath() const { return path; }

private:
    static JsonLimits TextsOfAnyLength()
    {
        JsonLimits limits;
        limits.stringBytes = limits.sizeBytes;
        return limits;
    }

    bool Enters()
    {
        switch (reader.GetType()) {
        case JsonReader::Type::Object:
            return EntersObject();
        case JsonReader::Type::Array:
            return EntersArray();
        case JsonReader::Type::String:
            return IsLong();
        default:
            reader.Skip();
            return false;
        }
    }

    bool EntersObject()
    {
        reader.EnterObject();
        while (reader.NextMember()) {
            path.append({reader.GetKey(), -1, QString()});
            if (Enters())
                return true;
            path.removeLast();
        }
        return false;
    }

    bool EntersArray()
    {
        reader.EnterArray();
        for (int index = 0; reader.NextElement(); ++index) {
            path.append({QByteArray(), index, QString()});
            if (Enters())
                return true;
            path.removeLast();
        }
        return false;
    }

    bool IsLong()
    {
        QByteArray text;
        reader.ReadUtf8(text);
        const int own = path.size() - 1;
        if (own > 0 && path.at(own).key == "name")
            path[own - 1].name = QString::fromUtf8(text.left(4 * longestShownName)).left(longestShownName);
        return text.size() > ContentLimits::textBytes;
    }

    JsonReader reader;
    Path path;
};

QByteArray KeyAt(const Path& path, int place)
{
    return place < path.size() ? path.at(place).key : QByteArray();
}

int IndexAt(const Path& path, int place)
{
    return place < path.size() ? path.at(place).index : -1;
}

QString Called(const char* kind, const Path& path, int place)
{
    const QString name = place < path.size() ? path.at(place).name : QString();
    return QString::fromUtf8(kind) + (name.isEmpty() ? QStringLiteral(" %1").arg(IndexAt(path, place) + 1)
                                                     : QStringLiteral("“%1”").arg(name));
}

// uiData, pages, page, part, …
QString InPages(const Path& path)
{
    constexpr int page = 2;
    constexpr int part = 3;
    const QString where = Called("界面", path, page);
    if (KeyAt(path, part) == "params")
        return where + QStringLiteral("的") + Called("参数", path, part + 1);
    if (KeyAt(path, part) == "table" && KeyAt(path, part + 1) == "rows")
        return where + QStringLiteral("的表格第 %1 行第 %2 列")
                           .arg(IndexAt(path, part + 2) + 1)
                           .arg(IndexAt(path, part + 3) + 1);
    return KeyAt(path, part) == "tools" ? where + QStringLiteral("的一个工具")
                                        : where + QStringLiteral("中的文字");
}

// processData, processes, process, part, …
QString InProcesses(const Path& path)
{
    constexpr int process = 2;
    constexpr int part = 3;
    const QString where = Called("流程", path, process);
    if (KeyAt(path, part) == "program")
        return where + QStringLiteral("的代码");
    return where + (KeyAt(path, part) == "statements" ? QStringLiteral("中一个步骤的内容")
                                                      : QStringLiteral("中的文字"));
}

QString Words(const Path& path)
{
    const QByteArray area = KeyAt(path, 0);
    if (area == "extendInfo" && KeyAt(path, 1) == "manual")
        return QStringLiteral("使用说明");
    if (area == "uiData")
        return InPages(path);
    if (area == "processData")
        return InProcesses(path);
    if (area == "htmlNodes" || area == "uiaNodes")
        return QStringLiteral("一个捕获的元素");
    return area == "packageInfo" ? QStringLiteral("扩展包列表") : QStringLiteral("应用中的一段文字");
}
} // namespace

QString RpaContentExcess::Find(const QByteArray& json)
{
    QString reason;
    if (JsonGuard::Check(json, &reason))
        return {};
    if (json.size() > ContentLimits::totalBytes)
        return QStringLiteral("应用的全部内容超过 %1 MB").arg(ContentLimits::totalBytes / bytesPerMegabyte);
    LongTextSearch search(json);
    if (search.Run())
        return QStringLiteral("%1超过 %2 MB")
            .arg(Words(search.GetPath()))
            .arg(ContentLimits::textBytes / bytesPerMegabyte);
    return QStringLiteral("应用的内容无法再次打开（%1）").arg(reason);
}
