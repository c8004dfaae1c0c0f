#pragma once

#include "Script.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

class QWidget;
class ZEFUIDialog;

/*!
 * A scripted user in front of every form of this process: fills in each form that appears, child forms
 * included, by real key and mouse events, and takes screenshots.
 */
class ScriptPlayer : public QObject {
    Q_OBJECT

public:
    //! Screenshots go to \a screenshotFolder as <name>_<locale>.png.
    ScriptPlayer(const Script& script, const QString& screenshotFolder, QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Script m_script;
    QString m_screenshotFolder;
};

//! The scripted user of one form; the form's host owns it. One step at a time, each when its widget is ready.
class ScriptedUser : public QObject {
    Q_OBJECT

public:
    ScriptedUser(const QList<Script::Step>& steps, const QString& screenshotFolder, ZEFUIDialog* host);

private:
    void next();
    void giveUp(const QString& reason);
    void perform(const Script::Step& step, QWidget* target);
    void type(const QString& text);
    void press(int key, Qt::KeyboardModifiers modifiers, const QString& text);
    void click(QWidget* target);
    void takeScreenshot(const QString& name);

    ZEFUIDialog* m_host;
    QList<Script::Step> m_steps;
    QString m_screenshotFolder;
    QTimer m_timer;
    QDeadlineTimer m_patience;
};
