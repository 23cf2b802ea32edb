// Takes the place of a worker, or of a program that a worker runs, and never does its work. What it
// does instead is chosen when it is built: TalksGarbage, or an answer that all is done, with
// nothing written.
#include <cstring>
#include <iostream>
#include <string>

namespace {

constexpr char Garbage[] =
    "Working\xe2\x80\xa6\n{\"event\":\"done\"\n[1,2]\n\xff\xfe\n\n{\"id\":\"one\",\"event\":7}\n"
    "{\"id\":4711,\"event\":\"done\"}\n%%[Page: x]%%\nError: /\n";

bool isWorker(const char *program)
{
    return std::strstr(program, "quorlin-pdf-") != nullptr;
}

/// The number of a request, as it stands there.
std::string idOf(const std::string &request)
{
    const auto at = request.find("\"id\":");
    return at == std::string::npos ? "0" : std::to_string(std::stoll(request.substr(at + 5)));
}

void sayDone(const std::string &request)
{
    std::cout << "{\"id\":" << idOf(request) << ",\"event\":\"done\",\"pages\":1}\n" << std::flush;
}

} // namespace

int main(int, char *arguments[])
{
    if (isWorker(arguments[0]))
        std::cout << "{\"event\":\"ready\"}\n" << std::flush;
    else if (!TalksGarbage)
        return 0;
    else
        std::cout << Garbage << std::flush;
    for (std::string request; std::getline(std::cin, request);) {
        if (TalksGarbage)
            std::cout << Garbage << std::flush;
        else
            sayDone(request);
    }
    return 0;
}
