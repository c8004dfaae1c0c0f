#pragma once

#include <ZEFUIElement.h>

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QMetaProperty>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

//! The string properties of each class that one run of interpolate() meets, in the order of the meta-object.
class StringProperties {
public:
    const QList<QMetaProperty>& of(const QMetaObject* meta);

private:
    QHash<const QMetaObject*, QList<QMetaProperty>> m_properties;
};

/*!
 * The state of a ZEFUIElement. The element owns the context; the widget and the delegate belong to others and
 * may die at any time.
 */
class ZEFUIElementPrivate {
public:
    ZEFUIElementPrivate(QWidget* widget, ZEFUIElement* parentElement);

    //! For tests of states that no operation of the library sets.
    static ZEFUIElementPrivate* get(const ZEFUIElement* element) { return element->d.get(); }

    /*!
     * Keeps close() and destroy() from deleting the host while a guard lives: Qt goes on working with
     * a widget after its show and hide events, so the host holds one while it emits from there.
     */
    class DeletionGuard {
    public:
        explicit DeletionGuard(ZEFUIElement* element);
        ~DeletionGuard();

    private:
        Q_DISABLE_COPY_MOVE(DeletionGuard)
        QPointer<ZEFUIElement> m_element;
    };

    //! The text from which interpolation made \a text, or \a text itself.
    QString templateOf(const QString& text) const;
    void interpolateWidget(ZEFUIElement* element, QWidget* target, const ZEFDictionaryList& dictionaries,
                           StringProperties& stringProperties);

    //! Whether the host must not be deleted right now; then it is deleted as soon as events run again.
    bool postponeDeletion(ZEFUIElement* element);

    QPointer<QObject> delegate;
    QString formPath;
    QString styleSheetPath;
    QPointer<QWidget> widget;
    QMap<QString, QString> interpolationSources;
    QList<ZEFUIElement*> childElements;
    QPointer<ZEFUIElement> parentElement;
    bool loaded = false;
    bool closing = false;
    bool geometryPending = false;
    bool mayRaise = true;
    bool secondary = false;
    bool beingDeleted = false;
    int deletionGuards = 0;
    ZEFPipeFacilityInvocationContext* context = nullptr;
    QTimer housekeepingTimer;
    long clientPID = 0;
    QPoint savedPosition;
    QSize savedSize;
    QString locale;
    QString formName;
    int closeSelection = 0;

private:
    Q_DISABLE_COPY_MOVE(ZEFUIElementPrivate)
};
