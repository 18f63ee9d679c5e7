// SPDX-License-Identifier: Apache-2.0

// Stands in for python.exe where the Windows programs are tested under Wine: runs Linux' Python, which Wine
// can start but neither wait for nor give pipes to. The two halves speak over loopback connections. Paths
// among the arguments are translated; paths inside of files and of what is read and written are not.

#include <cstdint>
#include <string>
#include <thread>
#include <vector>
#include <winsock2.h>

namespace
{
constexpr int partBytes = 65536;
constexpr UINT crashCode = 0xC0000005; // what an access violation ends with

std::string Utf8(const std::wstring& text)
{
    std::string result(text.size() * 3, '\0');
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         result.data(), static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(size));
    return result;
}

bool IsWindowsPath(const std::wstring& text)
{
    return text.size() > 2 && iswalpha(text[0]) && text[1] == L':' && (text[2] == L'\\' || text[2] == L'/');
}

std::string UnixPath(const std::wstring& path)
{
    using Translate = char*(__cdecl*)(LPCWSTR);
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
    char* const name =
        found ? reinterpret_cast<Translate>(reinterpret_cast<void*>(found))(path.c_str()) : nullptr;
    const std::string result = name ? name : Utf8(path);
    if (name)
        HeapFree(GetProcessHeap(), 0, name);
    return result;
}

// Also the path in "--option=C:\path".
std::string Translated(const std::wstring& argument)
{
    const std::size_t sign = argument.compare(0, 2, L"--") == 0 ? argument.find(L'=') : std::wstring::npos;
    const std::size_t start = sign == std::wstring::npos ? 0 : sign + 1;
    const std::wstring rest = argument.substr(start);
    return Utf8(argument.substr(0, start)) + (IsWindowsPath(rest) ? UnixPath(rest) : Utf8(rest));
}

SOCKET Listen(unsigned short& port)
{
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0)
        return INVALID_SOCKET;
    const SOCKET listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener, 2) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return INVALID_SOCKET;
    port = ntohs(address.sin_port);
    return listener;
}

bool StartOtherHalf(unsigned short port)
{
    std::wstring line = L"/usr/bin/python3 -I " WINE_PYTHON_SCRIPT " " + std::to_wstring(port);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    return CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &started);
}

void SendAll(SOCKET target, const char* bytes, std::size_t size)
{
    while (size > 0) {
        const int sent = send(target, bytes, static_cast<int>(size), 0);
        if (sent <= 0)
            return;
        bytes += sent;
        size -= static_cast<std::size_t>(sent);
    }
}

void SendNumber(SOCKET target, std::size_t number)
{
    const auto value = static_cast<std::int32_t>(number);
    SendAll(target, reinterpret_cast<const char*>(&value), sizeof value);
}

void SendArguments(SOCKET control, const std::vector<std::wstring>& arguments)
{
    SendNumber(control, arguments.size());
    for (const std::wstring& word : arguments) {
        const std::string argument = Translated(word);
        SendNumber(control, argument.size());
        SendAll(control, argument.data(), argument.size());
    }
}

void CarryInput(SOCKET data)
{
    std::vector<char> part(partBytes);
    DWORD count = 0;
    while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), part.data(), partBytes, &count, nullptr) && count > 0)
        SendAll(data, part.data(), count);
    shutdown(data, SD_SEND);
}

void CarryOutput(SOCKET data)
{
    std::vector<char> part(partBytes);
    for (int count = 0; (count = recv(data, part.data(), partBytes, 0)) > 0;) {
        DWORD written = 0;
        WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), part.data(), static_cast<DWORD>(count), &written, nullptr);
    }
}

UINT ReadExitCode(SOCKET control)
{
    std::int32_t code = -1;
    if (recv(control, reinterpret_cast<char*>(&code), sizeof code, MSG_WAITALL) != sizeof code || code < 0)
        return crashCode;
    return static_cast<UINT>(code);
}
} // namespace

int wmain(int count, wchar_t** words)
{
    unsigned short port = 0;
    const SOCKET listener = Listen(port);
    if (listener == INVALID_SOCKET || !StartOtherHalf(port))
        return 127;
    const SOCKET control = accept(listener, nullptr, nullptr);
    const SOCKET data = accept(listener, nullptr, nullptr);
    SendArguments(control, {words + 1, words + count});
    std::thread(CarryInput, data).detach();
    std::thread output(CarryOutput, data);
    const UINT code = ReadExitCode(control);
    output.join();
    ExitProcess(code);
}
