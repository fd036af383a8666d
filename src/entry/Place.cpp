#include "entry/Place.h"

#include <utility>

namespace quillo {

Place::Place(unicode::CivilCalendar calendar, LanguageModel* model)
    : calendar_(std::move(calendar)), format_(calendar_.zone(), calendar_.locale()),
      parser_(calendar_, format_, model) {}

Result<std::shared_ptr<const Place>> Place::create(std::string_view zone, std::string_view locale,
                                                   LanguageModel* model) {
    auto calendar = unicode::CivilCalendar::create(zone, locale);
    if (!calendar)
        return Error{"unknown time zone \"" + std::string(zone) + "\""};
    return std::shared_ptr<const Place>(new Place(std::move(*calendar), model));
}

Result<std::shared_ptr<const Place>> Places::at(const std::string& zone, const std::string& locale) {
    for (auto place = recent_.begin(); place != recent_.end(); ++place) {
        const unicode::CivilCalendar& calendar = (*place)->calendar();
        if (calendar.zone() == zone && calendar.locale() == locale) {
            recent_.splice(recent_.begin(), recent_, place);
            return recent_.front();
        }
    }
    auto place = Place::create(zone, locale, model_);
    if (place) {
        recent_.push_front(*place);
        if (recent_.size() > kept)
            recent_.pop_back();
    }
    return place;
}

} // namespace quillo
