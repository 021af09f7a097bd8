// SPDX-License-Identifier: MIT

#pragma once

// What a header offers to those who cannot click and drag: its sections, by their logical index.
class HeaderControl
{
public:
    virtual ~HeaderControl() = default;

    // The section that the keys are for, or -1.
    [[nodiscard]] virtual int cursorSection() const = 0;

    // Gives the header the focus and section the cursor.
    virtual void focusSection(int section) = 0;

    [[nodiscard]] virtual bool canPressSection(int section) const = 0;
    // Does what a click on the section does.
    virtual void pressSection(int section) = 0;

    [[nodiscard]] virtual bool canResizeSection(int section) const = 0;
    // Makes the section wider by so many steps, or narrower by as many negative ones.
    virtual void widenSection(int section, int steps) = 0;
};
