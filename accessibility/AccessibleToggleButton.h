#pragma once

#include "AccessibleLeaf.h"

#include <ZEFToggleButton.h>

//! A check box called as the text of its state.
class AccessibleToggleButton : public AccessibleLeaf {
public:
    explicit AccessibleToggleButton(ZEFToggleButton* button);

    QAccessible::State state() const override;

protected:
    QString content() const override;

private:
    ZEFToggleButton* button() const;
};
