#pragma once

#include "widgetProbing.h"

#include <QtWidgets/QDialog>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

//! A base style that writes down the text flags and the primitives which arrive at it.
class RecordingStyle : public QProxyStyle {
public:
    mutable QList<int> textFlags;
    mutable QList<PrimitiveElement> primitives;

    // Not over the platform's own style, which may paint a whole button without asking for its parts.
    RecordingStyle()
        : QProxyStyle(QStringLiteral("Fusion"))
    {
    }

    QRect itemTextRect(const QFontMetrics& metrics, const QRect& rect, int flags, bool enabled,
                       const QString& text) const override
    {
        textFlags.append(flags);
        return QProxyStyle::itemTextRect(metrics, rect, flags, enabled, text);
    }

    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole textRole) const override
    {
        textFlags.append(flags);
        QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, textRole);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        primitives.append(element);
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
};

//! Puts a recording style below the control style of \a widget, which owns it from then on.
inline RecordingStyle* recordBelow(QWidget& widget)
{
    auto* control = qobject_cast<QProxyStyle*>(widget.style());
    if (!control)
        return nullptr;
    auto* recorder = new RecordingStyle;
    control->setBaseStyle(recorder);
    return recorder;
}

//! Writes down every object name that a widget gets while it is being constructed below \a parent.
class NameLog : public QObject {
    Q_OBJECT

public:
    explicit NameLog(QWidget* parent) { parent->installEventFilter(this); }

    QStringList names;

    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == QEvent::ChildAdded) {
            connect(static_cast<QChildEvent*>(e)->child(), &QObject::objectNameChanged, this,
                    [this](const QString& name) { names.append(name); });
        }
        return false;
    }
};

//! How a style sheet reaches a control that has a style of its own.
inline void addStyleSheetRows()
{
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("inherited");
    QTest::addColumn<QString>("application");
    const QString sheet = QStringLiteral("* { color: red; padding: 3px; }");
    QTest::newRow("none") << QString() << QString() << QString();
    QTest::newRow("its own") << sheet << QString() << QString();
    QTest::newRow("inherited") << QString() << sheet << QString();
    QTest::newRow("the application's") << QString() << QString() << sheet;
    QTest::newRow("all") << sheet << sheet << sheet;
}

//! Lives and dies under the style sheets of the row, in every order in which parents and sheets may come.
//! A dialog inside the control has taken over the control's style, as wizards do for their buttons.
template <class Control> void dieAfterTheWidgetsInside()
{
    QStringList order;
    auto control = std::make_unique<Control>();
    QObject::connect(control->style(), &QObject::destroyed, [&] { order.append(QStringLiteral("style")); });
    control->setStyleSheet(QStringLiteral("color: red"));
    control->ensurePolished();
    auto* inside = new QDialog(control.get());
    QObject::connect(inside, &QObject::destroyed, [&] { order.append(QStringLiteral("dialog")); });
    inside->setStyle(control->style());
    inside->ensurePolished();
    control.reset();
    QCOMPARE(order, QStringList({QStringLiteral("dialog"), QStringLiteral("style")}));
}

template <class Control> void liveUnderStyleSheets()
{
    QFETCH(const QString, own);
    QFETCH(const QString, inherited);
    QFETCH(const QString, application);
    const auto cleanUp = qScopeGuard([] { qApp->setStyleSheet(QString()); });

    qApp->setStyleSheet(application);
    auto window = std::make_unique<QWidget>();
    window->setStyleSheet(inherited);
    auto* layout = new QVBoxLayout(window.get());
    auto* withParent = new Control(window.get());
    withParent->setText(QStringLiteral("text"));
    withParent->setStyleSheet(own);
    layout->addWidget(withParent);
    auto* adopted = new Control;
    adopted->setText(QStringLiteral("text"));
    adopted->setStyleSheet(own);
    layout->addWidget(adopted);
    auto* deletedBefore = new Control(window.get());
    deletedBefore->setStyleSheet(own);
    layout->addWidget(deletedBefore);
    QVERIFY(showActive(*window));
    delete deletedBefore;
    qApp->setStyleSheet(QString());
    window->setStyleSheet(QString());
    withParent->setStyleSheet(QString());
    withParent->setStyleSheet(own);
    window->setStyleSheet(inherited);
    qApp->setStyleSheet(application);
    QCoreApplication::processEvents();
    window.reset();

    Control alone;
    alone.setStyleSheet(own);
    alone.ensurePolished();
}

//! Whether a dying control gives its style back before the style dies; Qt would go on using it.
template <class Control> bool takesItsStyleOff()
{
    auto* control = new Control;
    bool stillSet = true;
    QObject::connect(control->style(), &QObject::destroyed,
                     [&] { stillSet = control->testAttribute(Qt::WA_SetStyle); });
    delete control;
    return !stillSet;
}
