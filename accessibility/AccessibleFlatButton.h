#pragma once

#include "AccessibleLeaf.h"

#include <ZEFFlatButton.h>

//! A button called as its text, pressed as with a mouse.
class AccessibleFlatButton : public AccessibleLeaf {
public:
    explicit AccessibleFlatButton(ZEFFlatButton* button);

protected:
    QString content() const override;

private:
    ZEFFlatButton* button() const;
};
