#pragma once

#include "AccessibleLeaf.h"

#include <ZEFToggleButton.h>

//! A check box called as the text of its state.
class AccessibleToggleButton : public AccessibleLeaf {
public:
    explicit AccessibleToggleButton(ZEFToggleButton* button);

    QString text(QAccessible::Text t) const override;
    QAccessible::State state() const override;

private:
    ZEFToggleButton* button() const;
};
