#include "ScriptPlayer.h"

#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtCore/QFileInfo>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 10s;
constexpr auto retryInterval = 10ms;

QString formName(const ZEFUIElement* element)
{
    const QString name = QFileInfo(element->formPath()).completeBaseName();
    return name.startsWith(u"win_") ? name.mid(4) : name;
}

void sendMouseEvent(QWidget* target, QEvent::Type type, Qt::MouseButtons buttons)
{
    const QPointF position = target->rect().center();
    QMouseEvent event(type, position, target->mapToGlobal(position), Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

} // namespace

ScriptPlayer::ScriptPlayer(const Script& script, const QString& screenshotFolder, QObject* parent)
    : QObject(parent)
    , m_script(script)
    , m_screenshotFolder(screenshotFolder)
{
    qApp->installEventFilter(this);
}

bool ScriptPlayer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        auto* host = qobject_cast<ZEFUIDialog*>(watched);
        if (host && host->element()
            && !host->findChild<ScriptedUser*>(QString(), Qt::FindDirectChildrenOnly)) {
            const QList<Script::Step> steps = m_script.stepsFor(formName(host->element()));
            if (!steps.isEmpty())
                new ScriptedUser(steps, m_screenshotFolder, host);
        }
    }
    return QObject::eventFilter(watched, event);
}

ScriptedUser::ScriptedUser(const QList<Script::Step>& steps, const QString& screenshotFolder,
                           ZEFUIDialog* host)
    : QObject(host)
    , m_host(host)
    , m_steps(steps)
    , m_screenshotFolder(screenshotFolder)
    , m_patience(patience)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &ScriptedUser::next);
    m_timer.start(0ms);
}

void ScriptedUser::next()
{
    const Script::Step step = m_steps.first();
    QWidget* target =
        step.widget.isEmpty() ? m_host->focusWidget() : m_host->findChild<QWidget*>(step.widget);
    const bool ready =
        step.action == Script::Step::Screenshot || (target && target->isVisible() && target->isEnabled());
    if (!ready && m_patience.hasExpired()) {
        giveUp(u"there is no usable widget " + step.widget);
        return;
    }
    if (!ready) {
        m_timer.start(retryInterval);
        return;
    }
    m_steps.removeFirst();
    m_patience.setRemainingTime(patience);
    if (!m_steps.isEmpty())
        m_timer.start(0ms);
    // The last thing done here: the step may close the form, and with it this user.
    perform(step, target);
}

void ScriptedUser::giveUp(const QString& reason)
{
    qWarning().noquote().nospace() << "script: form " << formName(m_host->element()) << ": " << reason;
    m_host->element()->close();
}

void ScriptedUser::perform(const Script::Step& step, QWidget* target)
{
    switch (step.action) {
    case Script::Step::Wait:
        break;
    case Script::Step::Type:
        target->setFocus();
        type(step.text);
        break;
    case Script::Step::Click:
        click(target);
        break;
    case Script::Step::Press: {
        target->setFocus();
        const QKeyCombination key = QKeySequence(step.text)[0];
        press(key.key(), key.keyboardModifiers(), QString());
        break;
    }
    case Script::Step::Screenshot:
        takeScreenshot(step.text);
        break;
    }
}

void ScriptedUser::type(const QString& text)
{
    const QPointer<ScriptedUser> self(this);
    for (const QChar character : text) {
        press(character.toUpper().unicode(), Qt::NoModifier, character);
        if (!self)
            return;
    }
}

void ScriptedUser::press(int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    const QPointer<ScriptedUser> self(this);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        // The focus may move from key to key.
        QWidget* target = m_host->focusWidget();
        QKeyEvent event(type, key, modifiers, text);
        QCoreApplication::sendEvent(target ? target : m_host, &event);
        if (!self)
            return;
    }
}

void ScriptedUser::click(QWidget* target)
{
    const QPointer<QWidget> guard(target);
    sendMouseEvent(target, QEvent::MouseButtonPress, Qt::LeftButton);
    if (guard)
        sendMouseEvent(target, QEvent::MouseButtonRelease, Qt::NoButton);
}

void ScriptedUser::takeScreenshot(const QString& name)
{
    const QString file = name + u'_' + m_host->element()->locale() + u".png";
    if (!m_host->grab().save(QDir(m_screenshotFolder).filePath(file)))
        qWarning().noquote().nospace() << "script: cannot write " << file << " to " << m_screenshotFolder;
}
