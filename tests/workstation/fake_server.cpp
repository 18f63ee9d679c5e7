// SPDX-License-Identifier: Apache-2.0

// Plays a version server that misbehaves, in the way that the last argument (the data folder's name) asks
// for. It keeps what it read and counts its starts in that folder.

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <iterator>
#include <limits>
#include <map>
#include <string>

namespace
{
namespace fs = std::filesystem;

fs::path data;

void Note(const char* file, const std::string& line, std::ios::openmode mode = std::ios::trunc)
{
    std::ofstream(data / file, mode | std::ios::out | std::ios::binary) << line << '\n';
}

std::ptrdiff_t Starts()
{
    std::ifstream starts(data / "starts");
    return std::distance(std::istream_iterator<std::string>(starts), {});
}

void Say(const std::string& line)
{
    std::cout << line << std::endl;
}

void SayReady()
{
    Say(R"({"listening":"http://127.0.0.1:4711"})");
}

int WaitForEndOfInput()
{
    std::cin.ignore(std::numeric_limits<std::streamsize>::max());
    return 0;
}

int BeGood()
{
    SayReady();
    WaitForEndOfInput();
    Note("ended", "end");
    return 0;
}

int Die()
{
    return 3;
}

int DieOnce()
{
    if (Starts() == 1)
        return Die();
    SayReady();
    return WaitForEndOfInput();
}

int BeForeign()
{
    Say(R"({"listening":"http://rpa.example.com:80"})");
    return WaitForEndOfInput();
}

int TalkNonsense()
{
    Say("hello");
    return WaitForEndOfInput();
}

int Chat()
{
    SayReady();
    for (int i = 0; i < 2000; ++i)
        Say("line " + std::to_string(i));
    Note("chatted", "done");
    return WaitForEndOfInput();
}

int BeStubborn()
{
    SayReady();
    std::promise<void>().get_future().wait(); // for what never comes
    return 0;
}

const std::map<std::string, int (*)()> behaviours = {
    {"good", &BeGood},           {"dies", &Die},    {"dies-once", &DieOnce},   {"foreign", &BeForeign},
    {"nonsense", &TalkNonsense}, {"chatty", &Chat}, {"stubborn", &BeStubborn},
};
} // namespace

int main(int argc, char** argv)
{
    data = fs::path(argv[argc - 1]);
    fs::create_directories(data);
    Note("starts", "start", std::ios::app);
    std::string handshake;
    std::getline(std::cin, handshake);
    Note("handshake", handshake);
    return behaviours.at(data.filename().string())();
}
