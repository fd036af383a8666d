#include "linux/updates/Appcast.h"

#include <QXmlStreamReader>
#include <utility>

namespace quillo {

namespace {

constexpr QLatin1String appcastSpace("http://www.andymatuschak.org/xml-namespaces/sparkle");
constexpr qsizetype signatureBytes = 64;

/// What an item says of its release, complete or not.
struct RawItem {
    QString build;
    QString version;
    QString minimumSystem;
    QString notes;
    QString published;
    QString channel;
    QString system;
    QString url;
    QString length;
    QString signature;
};

/// The text of the current element. What is nested is passed over: reading it too would take stack.
QString text(QXmlStreamReader& xml) {
    return xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
}

void readEnclosure(QXmlStreamReader& xml, RawItem& item) {
    const QXmlStreamAttributes attributes = xml.attributes();
    const auto own = [&](const char* name) {
        return attributes.value(appcastSpace, QLatin1String(name)).toString();
    };
    item.url = attributes.value(QLatin1String("url")).toString();
    item.length = attributes.value(QLatin1String("length")).toString();
    item.signature = own("edSignature");
    item.system = own("os");
    // Where feeds had them once.
    if (item.build.isEmpty())
        item.build = own("version");
    if (item.version.isEmpty())
        item.version = own("shortVersionString");
    xml.skipCurrentElement();
}

RawItem readItem(QXmlStreamReader& xml) {
    RawItem item;
    while (xml.readNextStartElement()) {
        const bool own = xml.namespaceUri() == appcastSpace;
        const QStringView name = xml.name();
        if (own && name == QLatin1String("version"))
            item.build = text(xml);
        else if (own && name == QLatin1String("shortVersionString"))
            item.version = text(xml);
        else if (own && name == QLatin1String("minimumSystemVersion"))
            item.minimumSystem = text(xml);
        else if (own && name == QLatin1String("channel"))
            item.channel = text(xml);
        else if (!own && name == QLatin1String("description"))
            item.notes = text(xml);
        else if (!own && name == QLatin1String("pubDate"))
            item.published = text(xml);
        else if (!own && name == QLatin1String("enclosure"))
            readEnclosure(xml, item);
        else
            xml.skipCurrentElement();
    }
    return item;
}

std::optional<AppcastItem> complete(const RawItem& raw) {
    const auto build = BuildNumber::parse(raw.build.toStdString());
    // A channel is for those who asked for it.
    if (!build || !raw.channel.isEmpty() || !(raw.system.isEmpty() || raw.system == QLatin1String("linux")))
        return std::nullopt;
    bool isNumber = false;
    AppcastItem item{.build = *build,
                     .buildText = raw.build,
                     .version = raw.version.isEmpty() ? raw.build : raw.version,
                     .minimumSystem = raw.minimumSystem,
                     .notes = raw.notes,
                     .published = QDateTime::fromString(raw.published, Qt::RFC2822Date),
                     .archive = QUrl(raw.url, QUrl::StrictMode),
                     .length = raw.length.toULongLong(&isNumber),
                     .signature = QByteArray::fromBase64(raw.signature.toLatin1())};
    if (!isNumber || item.length == 0 || !item.archive.isValid() || item.archive.isRelative() ||
        item.signature.size() != signatureBytes)
        return std::nullopt;
    return item;
}

} // namespace

std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& feed) {
    QXmlStreamReader xml(feed);
    // Before the root element there may be a declaration; Qt ends with an error where anything else is.
    while (!xml.atEnd() && xml.tokenType() != QXmlStreamReader::StartElement) {
        if (xml.readNext() == QXmlStreamReader::DTD)
            return std::nullopt;
    }
    if (xml.name() != QLatin1String("rss") || !xml.readNextStartElement() ||
        xml.name() != QLatin1String("channel"))
        return std::nullopt;
    std::vector<AppcastItem> items;
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("item")) {
            xml.skipCurrentElement();
            continue;
        }
        if (auto item = complete(readItem(xml)))
            items.push_back(*std::move(item));
    }
    while (!xml.atEnd())
        xml.readNext();
    if (xml.hasError())
        return std::nullopt;
    return items;
}

} // namespace quillo
