// Prints the appearance that the desktop asks for, a line at first and after every change, until its input
// ends: a JSON object.
#include "linux/appearance/DesktopAppearance.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

const char* word(bool value) {
    return value ? "true" : "false";
}

void print(const quillo::Appearance& appearance) {
    std::printf(
        R"({"dark": %s, "highContrast": %s, "reduceMotion": %s, "reduceTransparency": %s, "accent": )",
        word(appearance.dark), word(appearance.highContrast), word(appearance.reduceMotion),
        word(appearance.reduceTransparency));
    if (const auto& accent = appearance.accent)
        std::printf("[%.3f, %.3f, %.3f]}\n", accent->red, accent->green, accent->blue);
    else
        std::puts("null}");
    std::fflush(stdout);
}

} // namespace

int main(int count, char** arguments) {
    QCoreApplication application(count, arguments);
    const bool x11 = count > 1 && std::string_view(arguments[1]) == "x11";
    using Windows = quillo::DesktopAppearance::Windows;
    const quillo::DesktopAppearance desktop(x11 ? Windows::x11 : Windows::alwaysBlended);
    const auto printing = desktop.appearance().observe(print);
    print(desktop.appearance().get());
    const QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
