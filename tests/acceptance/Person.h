#pragma once

#include <QPoint>
#include <QString>
#include <filesystem>
#include <string>
#include <vector>

namespace brindle {

/// Somebody in front of the windows of this process: reads what a screen reader reads, and has a keyboard and
/// a mouse that the window system knows. Thread: main.
class Person {
public:
    struct Element {
        QString name;
        QPoint middle;  // on the screen
    };

    /// Everything that shows, in reading order.
    [[nodiscard]] std::vector<Element> elements() const;
    /// Whether an element of this name comes to show within any reasonable time; the name may also be the
    /// beginning of it, with "…" at the end, or its end, with "…" at the beginning.
    [[nodiscard]] bool sees(const std::string& name) const;
    [[nodiscard]] bool seesNo(const std::string& name) const;
    /// The first element of the name once it rests. Throws std::runtime_error when none comes to show.
    [[nodiscard]] Element find(const std::string& name) const;

    void click(const std::string& name) const;
    /// "ctrl+f", as xdotool(1) names keys.
    void press(const std::string& keys) const;
    void type(const std::string& text) const;

    /// Keeps a picture of the screen, where the test's user wants pictures.
    void look(const std::string& step) const;
    /// What shows, for the message of a test that failed.
    [[nodiscard]] std::string everything() const;

private:
    mutable int pictures_ = 0;
};

}  // namespace brindle
