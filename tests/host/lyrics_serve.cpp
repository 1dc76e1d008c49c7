// The lyrics service by itself, for tests that speak to it over the network:
//
//     lyrics_serve MODULE FOLDER [ONLINE CACHE]
//
// prints the base address, opens each item whose path comes on standard input, and prints the path
// when that is done. Ends with the input.
#include <cstdio>
#include <iostream>

#include "host/lyrics/server.h"

int main(int argumentCount, char** arguments) {
    using veldrin::Http;
    if (argumentCount != 3 && argumentCount != 5) {
        return 2;
    }
    const std::unique_ptr<Http> http = veldrin::OpenHttp(arguments[1]);
    const bool online = argumentCount == 5;
    veldrin::LyricsServer server(
        {arguments[2], online ? arguments[3] : "", online ? arguments[4] : ""},
        [&http] { return http.get(); },
        [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); });
    std::cout << server.Address() << std::endl;
    for (std::string path; std::getline(std::cin, path);) {
        server.ItemOpened(path);
        std::cout << path << std::endl;
    }
    return 0;
}
