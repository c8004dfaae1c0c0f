#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

/*!
 * What a scripted user does with each form, read from a JSON file:
 *
 * {"signin": [{"type": "anna", "into": "user"}, {"press": "Tab"}, {"click": "okButton"}]}
 */
class Script {
public:
    struct Step {
        enum Action { Wait, Type, Click, Press, Screenshot };
        Action action;
        //! The text to type, the key to press or the name of the screenshot.
        QString text;
        //! The widget that it is done to, by object name; empty means the one with the focus.
        QString widget;
    };

    //! The script in the file \a path. When it is none, \a error says why; otherwise \a error is empty.
    static Script fromFile(const QString& path, QString* error);

    //! What to do with the form \a form, none when the user leaves it alone.
    QList<Step> stepsFor(const QString& form) const { return m_steps.value(form); }

private:
    QHash<QString, QList<Step>> m_steps;
};
