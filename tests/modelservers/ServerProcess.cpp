#include "modelservers/ServerProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace quillo::support {

ServerProcess::ServerProcess(const std::string& program, const std::string& option) {
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (pipe(input.data()) != 0 || pipe(output.data()) != 0)
        throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ == 0) {
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        for (const int end : {input[0], input[1], output[0], output[1]})
            close(end);
        const std::string file = QUILLO_TESTS_FOLDER "/" + program;
        execl(QUILLO_PYTHON, QUILLO_PYTHON, "-B", file.c_str(), option.empty() ? nullptr : option.c_str(),
              nullptr);
        _exit(127);
    }
    close(input[0]);
    close(output[1]);
    input_ = input[1];
    output_ = output[0];
    port_ = readLine();
}

ServerProcess::~ServerProcess() {
    close(input_);
    close(output_);
    waitpid(process_, nullptr, 0);
}

std::string ServerProcess::readLine() {
    std::string line;
    for (char c = 0; read(output_, &c, 1) == 1 && c != '\n';)
        line += c;
    if (line.empty())
        throw std::runtime_error("the server has ended");
    return line;
}

} // namespace quillo::support
