#include "ui/row/RowText.h"

#include <QCoreApplication>

namespace quillo {

namespace {

bool breaksLine(QChar character) {
    return character.category() == QChar::Other_Control || character.category() == QChar::Separator_Line ||
           character.category() == QChar::Separator_Paragraph;
}

} // namespace

RowText::RowText(const unicode::CivilCalendar& calendar)
    : calendar_(calendar), format_(calendar.zone(), calendar.locale()), formatZone_(calendar.zone()) {}

QString RowText::title(std::string_view title) {
    QString line = QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size()));
    line.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (QChar& character : line) {
        if (breaksLine(character))
            character = u' ';
    }
    return line;
}

DueLabel RowText::dueLabel(Instant due, Instant now, bool isDone) const {
    return quillo::dueLabel(due, now, isDone, calendar_, format());
}

QString RowText::accessible(const TodoItem& item) const {
    QString text = title(item.title);
    if (item.isDone)
        text.prepend(QCoreApplication::translate("Quillo", "Completed task: "));
    if (item.dueDate)
        text += QLatin1String(", ") + QCoreApplication::translate("Quillo", "Due ") +
                QString::fromStdString(format().dateAndTime(*item.dueDate));
    return text;
}

const unicode::DateFormat& RowText::format() const {
    if (formatZone_ != calendar_.zone()) {
        formatZone_ = calendar_.zone();
        format_ = unicode::DateFormat(formatZone_, calendar_.locale());
    }
    return format_;
}

} // namespace quillo
