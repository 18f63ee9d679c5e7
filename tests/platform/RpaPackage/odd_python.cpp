// SPDX-License-Identifier: Apache-2.0

// Stands where Python is expected; what it does is in its name.

#include <cstdio>
#include <cstring>
#include <future>

int main(int argc, char** argv)
{
    if (std::strstr(argv[0], "fails"))
        return 1;
    if (std::strstr(argv[0], "echoes")) {
        for (int i = 1; i < argc; ++i)
            std::printf("%s ", argv[i]);
        return 0;
    }
    std::promise<void> never;
    never.get_future().wait(); // somebody ends it
    return 0;
}
