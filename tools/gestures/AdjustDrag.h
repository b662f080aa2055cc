// A drag that changes a number of the current tool: its size or its opacity, chosen by the key that
// is held at the press. The key may go up before the button.
#pragma once

#include <QPoint>

namespace vellum {

class AdjustDrag {
public:
    enum class Option { None, Size, Opacity };

    /// What a press changes with these keys held. A tool whose opacity is fixed has none to change.
    static Option optionFor(bool sizeKeyHeld, bool opacityKeyHeld, bool opacityFixed);

    /// `value` is the option's at the press, at view pixel `anchor`.
    void begin(Option option, int value, QPoint anchor);
    /// Returns whether a drag was on.
    bool end();

    bool isOn() const { return option_ != Option::None; }
    Option option() const { return option_; }
    QPoint anchor() const { return anchor_; }

    /// The option's value with the pointer there: one more for ten view pixels to the right. May
    /// lie outside the option's range.
    int valueAt(QPoint position) const;

private:
    Option option_ = Option::None;
    int startValue_ = 0;
    QPoint anchor_;
};

} // namespace vellum
