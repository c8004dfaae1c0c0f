#pragma once

#include "AccessibleLeaf.h"

#include <ZEFCommandLinkButton.h>

//! A button called as its title, described by its description.
class AccessibleCommandLinkButton : public AccessibleLeaf {
public:
    explicit AccessibleCommandLinkButton(ZEFCommandLinkButton* button);

    QString text(QAccessible::Text t) const override;
    QAccessible::State state() const override;
    QStringList keyBindingsForAction(const QString& name) const override;

protected:
    QString content() const override;

private:
    ZEFCommandLinkButton* button() const;
    const QLabel* label(const QString& name) const;
};
