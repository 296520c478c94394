#include "acceptance/Person.h"

#include "app/EventLoop.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <fmt/format.h>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>

namespace brindle {
namespace {

bool isNamed(const QString& name, const QString& wanted) {
    return name == wanted || (wanted.endsWith(u'…') && name.startsWith(wanted.chopped(1))) ||
           (wanted.startsWith(u'…') && name.endsWith(wanted.sliced(1)));
}

void read(QAccessibleInterface* element, const std::function<void(QAccessibleInterface&)>& see) {
    if (element == nullptr || !element->isValid() || element->state().invisible) return;
    see(*element);
    for (int i = 0; i < element->childCount(); ++i) read(element->child(i), see);
}

// In the test's own process the windows have to go on while the tool works.
void useTool(const QStringList& arguments) {
    QProcess tool;
    tool.start("xdotool", arguments);
    if (!runUntil([&] { return tool.state() == QProcess::NotRunning; }) || tool.exitCode() != 0)
        throw std::runtime_error("xdotool failed: " + tool.readAllStandardError().toStdString());
}

}  // namespace

std::vector<Person::Element> Person::elements() const {
    std::vector<Element> found;
    const auto see = [&](QAccessibleInterface& element) {
        found.push_back({.name = element.text(QAccessible::Name), .middle = element.rect().center()});
    };
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (window->isVisible()) read(QAccessible::queryAccessibleInterface(window), see);
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible()) read(QAccessible::queryAccessibleInterface(widget), see);
    return found;
}

bool Person::sees(const std::string& name) const {
    const QString wanted = QString::fromStdString(name);
    return runUntil([&] {
        for (const Element& element : elements())
            if (isNamed(element.name, wanted)) return true;
        return false;
    });
}

bool Person::seesNo(const std::string& name) const {
    const QString wanted = QString::fromStdString(name);
    return runUntil([&] {
        for (const Element& element : elements())
            if (isNamed(element.name, wanted)) return false;
        return true;
    });
}

Person::Element Person::find(const std::string& name) const {
    const QString wanted = QString::fromStdString(name);
    std::optional<Element> found;
    QElapsedTimer rest;
    const bool rests = runUntil([&] {
        const auto before = std::exchange(found, std::nullopt);
        for (const Element& element : elements())
            if (!found && isNamed(element.name, wanted)) found = element;
        if (!found || !before || before->middle != found->middle) rest.start();
        return found && rest.elapsed() > 60;
    });
    if (!rests) throw std::runtime_error("nothing shows with the name " + name + " among:\n" + everything());
    return *found;
}

void Person::click(const std::string& name) const {
    const QPoint place = find(name).middle;
    useTool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
}

void Person::press(const std::string& keys) const {
    useTool({"key", "--clearmodifiers", QString::fromStdString(keys)});
}

void Person::type(const std::string& text) const {
    useTool({"type", QString::fromStdString(text)});
}

void Person::look(const std::string& step) const {
    const char* folder = std::getenv("BRINDLE_PICTURES");
    if (folder == nullptr) return;
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < 400) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    const auto file = std::filesystem::path(folder) / fmt::format("week-{:02}-{}.png", ++pictures_, step);
    QGuiApplication::primaryScreen()->grabWindow(0).save(QString::fromStdString(file));
}

std::string Person::everything() const {
    std::string all;
    for (const Element& element : elements())
        if (!element.name.isEmpty()) all += element.name.toStdString() + "\n";
    return all;
}

}  // namespace brindle
