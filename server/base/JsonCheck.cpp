#include "JsonCheck.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <sodium.h>
#include <string_view>
#include <vector>

namespace server {
namespace {
constexpr std::size_t maximalDepth = 64;
constexpr std::size_t maximalMembers = 1000000;
constexpr rapidjson::SizeType maximalKeyBytes = 256;
constexpr rapidjson::SizeType maximalStringBytes = 16u * 1024 * 1024;
constexpr double maximalNumber = 9007199254740992.0;
constexpr std::ptrdiff_t fewKeys = 12;

// Two keys with one hash are taken for the same key, so the hash must not be foreseeable.
std::uint64_t HashOf(const char* text, std::size_t length)
{
    static const auto seed = [] {
        std::array<unsigned char, crypto_shorthash_KEYBYTES> key{};
        randombytes_buf(key.data(), key.size());
        return key;
    }();
    std::uint64_t hash = 0;
    crypto_shorthash(reinterpret_cast<unsigned char*>(&hash), reinterpret_cast<const unsigned char*>(text),
                     length, seed.data());
    return hash;
}

class Checker : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Checker>
{
public:
    bool Default() { return Element(); }
    bool Int64(std::int64_t number) { return Number(static_cast<double>(number)); }
    bool Uint64(std::uint64_t number) { return Number(static_cast<double>(number)); }
    bool Double(double number) { return Number(number); }

    bool String(const char*, rapidjson::SizeType length, bool)
    {
        return length <= maximalStringBytes ? Element() : Refuse("string-too-long");
    }

    bool Key(const char* text, rapidjson::SizeType length, bool)
    {
        if (length > maximalKeyBytes)
            return Refuse("key-too-long");
        keys.push_back(HashOf(text, length));
        return true;
    }

    bool StartObject() { return Enter(); }
    bool StartArray() { return Enter(); }

    bool EndObject(rapidjson::SizeType)
    {
        const auto first = keys.begin() + static_cast<std::ptrdiff_t>(starts.back());
        if (HasTwins(first, keys.end()))
            return Refuse("duplicate-key");
        keys.erase(first, keys.end());
        starts.pop_back();
        return true;
    }

    bool EndArray(rapidjson::SizeType)
    {
        starts.pop_back();
        return true;
    }

    const char* Fault() const { return fault; }

private:
    using Iterator = std::vector<std::uint64_t>::iterator;

    static bool HasTwins(Iterator first, Iterator last)
    {
        if (last - first <= fewKeys) {
            for (auto it = first; it != last; ++it) {
                if (std::find(first, it, *it) != it)
                    return true;
            }
            return false;
        }
        std::sort(first, last);
        return std::adjacent_find(first, last) != last;
    }

    bool Enter()
    {
        if (starts.size() >= maximalDepth)
            return Refuse("too-deep");
        starts.push_back(keys.size());
        return Element();
    }

    bool Element() { return ++members <= maximalMembers || Refuse("too-many-members"); }
    bool Number(double number)
    {
        return std::abs(number) <= maximalNumber ? Element() : Refuse("number-too-large");
    }

    bool Refuse(const char* reason)
    {
        fault = reason;
        return false;
    }

    std::vector<std::uint64_t> keys; // of the objects that are open, as hashes
    std::vector<std::size_t> starts; // where the keys of each open object or array begin
    std::size_t members = 0;
    const char* fault = nullptr;
};
} // namespace

const char* JsonFault(const QByteArray& json)
{
    const std::string_view text(json.constData(), static_cast<std::size_t>(json.size()));
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos || text[first] != '{')
        return "not-an-object";
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::Reader reader;
    Checker checker;
    constexpr unsigned flags = rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag;
    if (reader.Parse<flags>(stream, checker))
        return nullptr;
    return checker.Fault() ? checker.Fault() : "not-json";
}
} // namespace server
