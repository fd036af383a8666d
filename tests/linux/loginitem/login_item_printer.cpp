// Does with the portal's login item what its input says, and prints what comes of it, a line each:
//   on, off  ->  done, or the error's words
//   read     ->  on, off or unknown
// until its input ends.
#include "linux/loginitem/PortalLoginItem.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>

namespace {

void print(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

void obey(quillo::LoginItem& item, const std::string& line) {
    if (line == "read")
        item.read([](std::optional<bool> on) { print(!on ? "unknown" : *on ? "on" : "off"); });
    else
        item.change(line == "on", [](const quillo::Outcome& outcome) {
            print(outcome ? "done" : outcome.error().message);
        });
}

} // namespace

int main(int count, char** arguments) {
    QCoreApplication application(count, arguments);
    quillo::PortalLoginItem item(QStringLiteral("Because of the test."));
    const QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
        std::string line;
        // Whoever writes waits for an answer to each line, so that none stays behind in the buffer.
        if (std::getline(std::cin, line))
            obey(item, line);
        else
            QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}
