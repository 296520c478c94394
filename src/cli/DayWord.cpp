#include "cli/DayWord.h"

#include "cli/Context.h"
#include "model/FileNameText.h"
#include "model/Translation.h"

namespace brindle {

LocalDay dayNamed(const std::string& text, const Calendar& calendar, const LocalDay& today) {
    if (text == "today") return today;
    if (text == "yesterday") return calendar.addingDays(today, -1);
    const auto day = LocalDay::parse(text);
    if (!day || calendar.addingDays(*day, 0) != *day)
        throw UsageError(filled(translated("“{}” isn't a day. Give one like {}, or today, or yesterday."),
                                fileNameText(text), today.text()));
    return *day;
}

LocalDay pastDayNamed(const std::string& text, const Calendar& calendar, const LocalDay& today) {
    const LocalDay day = dayNamed(text, calendar, today);
    if (day > today) throw UsageError(filled(translated("{} is still to come."), calendar.longLabel(day)));
    return day;
}

}  // namespace brindle
