// Does with the desktop's shortcuts what its input says, and prints what comes of it, a line each:
//   register KEYCODE MODIFIERS  ->  status NUMBER, once the desktop has answered
//   unregister                  ->  unregistered
//   keys                        ->  keys DESCRIPTION, as the desktop gave them, with a + where its dialog can
//   be shown;
//                                   or none
//   configure                   ->  configured
//   a press of the shortcut     ->  pressed TOKEN
//   what the desktop decided    ->  keys DESCRIPTION, with a + behind it where it can be configured; or keys
//   none
// until its input ends.
#include "linux/hotkey/DesktopHotKeyCenter.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>

namespace {

using quillo::HotKeyCenter;
using quillo::HotKeyStatus;

void print(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

class Printer {
public:
    Printer() {
        center_.installHandler([](const quillo::HotKeyEvent* event) {
            print("pressed " + event->activationToken);
            return HotKeyStatus::noError;
        });
    }

    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        quillo::HotKeyConfig config;
        words >> command >> config.keyCode >> config.modifiers;
        if (command == "register") {
            reference_ = center_.registerHotKey(config, {1, 1}, [](HotKeyStatus status) {
                print("status " + std::to_string(static_cast<std::int32_t>(status)));
            });
        } else if (command == "configure") {
            center_.configure();
            print("configured");
        } else if (command == "keys") {
            const auto& keys = center_.desktopKeys().get();
            print(keys ? "keys " + keys->description + (keys->configurable ? "+" : "") : "none");
        } else if (reference_) {
            center_.unregisterHotKey(*reference_);
            print("unregistered");
        }
    }

private:
    quillo::DesktopHotKeyCenter center_{
        quillo::DesktopHotKeyCenter::waysOfThisSession(QStringLiteral("Quick Add…"))};
    std::optional<HotKeyCenter::HotKeyReference> reference_;
};

} // namespace

int main(int count, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN); // As the desktop program does.
    QCoreApplication application(count, arguments);
    Printer printer;
    const QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
        std::string line;
        // Whoever writes waits for an answer to each line, so that none stays behind in the buffer.
        if (std::getline(std::cin, line))
            printer.obey(line);
        else
            QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}
