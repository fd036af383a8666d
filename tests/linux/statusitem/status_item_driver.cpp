// A status item to be driven from a test: commands come in, what happens goes out, as JSON objects of a line
// each. It ends with its input.
//
//   {"do": "face", "symbol": …, "symbolDescription": …, "toolTip": …, "accessibilityLabel": …}
//   {"do": "title", "text": …}
//   {"do": "menu", "lines": [{"title": …, "shortcut": …, "enabled": …}, null, …]}     null is a separator
//   {"do": "show menu", "lines": …, "place": [x, y] or nothing}
#include "base/Log.h"
#include "linux/statusitem/DesktopStatusItem.h"

#include <unistd.h>

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QSocketNotifier>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace quillo;

void tell(const QJsonObject& event) {
    std::puts(QJsonDocument(event).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// A disc in place of the symbol: its corners are free.
QImage disc(std::string_view, const QColor& colour, int pixels) {
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(picture.rect());
    return picture;
}

std::string field(const QJsonObject& object, const char* name) {
    return object.value(QLatin1String(name)).toString().toStdString();
}

std::vector<MenuItem> menuFrom(const QJsonArray& lines) {
    std::vector<MenuItem> menu;
    for (const QJsonValue& line : lines) {
        if (line.isNull()) {
            menu.push_back(MenuItem::separator());
            continue;
        }
        const QJsonObject object = line.toObject();
        const std::string title = field(object, "title");
        std::function<void()> action;
        if (object.value(QLatin1String("enabled")).toBool(true)) {
            action = [title] {
                tell({{QStringLiteral("event"), QStringLiteral("chosen")},
                      {QStringLiteral("title"), text(title)}});
            };
        }
        menu.push_back(MenuItem::of(title, field(object, "shortcut"), std::move(action)));
    }
    return menu;
}

void tellClick(const StatusItemClick& click) {
    QJsonValue place;
    if (click.place)
        place = QJsonArray{click.place->x, click.place->y};
    tell({{QStringLiteral("event"), QStringLiteral("click")},
          {QStringLiteral("button"),
           click.button == StatusItemClick::Button::left ? QStringLiteral("left") : QStringLiteral("right")},
          {QStringLiteral("control"), click.controlHeld},
          {QStringLiteral("place"), place},
          {QStringLiteral("token"), text(click.activationToken)}});
}

void obey(StatusItem& item, const QJsonObject& command) {
    const std::string what = field(command, "do");
    const QJsonArray lines = command.value(QLatin1String("lines")).toArray();
    if (what == "face") {
        item.setFace({field(command, "symbol"),
                      field(command, "symbolDescription"),
                      field(command, "toolTip"),
                      field(command, "accessibilityLabel"),
                      {}});
    } else if (what == "title") {
        item.setTitle(field(command, "text"));
    } else if (what == "menu") {
        item.setMenu([lines] {
            tell({{QStringLiteral("event"), QStringLiteral("menu asked for")}});
            return menuFrom(lines);
        });
    } else if (what == "show menu") {
        std::optional<ScreenPoint> place;
        if (const QJsonArray at = command.value(QLatin1String("place")).toArray(); at.size() == 2)
            place = ScreenPoint{at.at(0).toInt(), at.at(1).toInt()};
        item.showMenu(menuFrom(lines), place);
    } else {
        log("unknown command: " + what);
    }
}

} // namespace

int main(int count, char** arguments) {
    setLogSink([](std::string_view line) {
        tell({{QStringLiteral("event"), QStringLiteral("log")}, {QStringLiteral("line"), text(line)}});
    });
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    DesktopStatusItem item(disc);
    const auto clicks = item.clicked.connect(tellClick);
    QByteArray input;
    QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &application, [&] {
        char buffer[4096];
        const ssize_t read = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (read <= 0) {
            QApplication::quit();
            return;
        }
        input.append(buffer, read);
        for (qsizetype end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
            obey(item, QJsonDocument::fromJson(input.left(end)).object());
            input.remove(0, end + 1);
        }
    });
    return QApplication::exec();
}
