// Construction, the accessors, and loading and styling a form.

#include "ZEFUIElementPrivate.h"

#include "FormCheck.h"
#include "ZEFUILoader.h"
#include "customClasses.h"
#include "debugOutput.h"

#include <accessibility/FieldDescription.h>

#include <ZEFBase.h>
#include <ZEFTranslatorCache.h>

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHashFunctions>
#include <QtCore/QLocale>
#include <QtCore/QSet>
#include <QtCore/QTranslator>
#include <QtWidgets/QLayout>
#include <QtWidgets/QVBoxLayout>

#include <chrono>
#include <memory>

using namespace std::chrono_literals;

namespace {

constexpr auto housekeepingInterval = 100ms;

//! Has a translator installed on the application for the length of a scope.
class TranslatorInForce {
public:
    explicit TranslatorInForce(QTranslator* translator)
        : m_translator(translator)
    {
        if (m_translator)
            QCoreApplication::installTranslator(m_translator);
    }
    ~TranslatorInForce()
    {
        // The cache may have dropped it meanwhile; a deleted translator has taken itself off.
        if (m_translator)
            QCoreApplication::removeTranslator(m_translator);
    }

private:
    Q_DISABLE_COPY_MOVE(TranslatorInForce)
    QPointer<QTranslator> m_translator;
};

//! The resource of \a name in \a folder: the one for Windows if there is one, else the common one.
QString resourcePath(const QString& folder, const QString& name, const QString& suffix)
{
    const QString windowsPath =
        QStringLiteral(":/%1/%2_%3.%4").arg(folder, QStringLiteral("win"), name, suffix);
    return QFile::exists(windowsPath) ? windowsPath : QStringLiteral(":/%1/%2.%3").arg(folder, name, suffix);
}

//! The classes that \a loader creates without a promotion.
FormCheck::Classes classesOf(const ZEFUILoader& loader)
{
    const QStringList layouts = loader.availableLayouts();
    const QStringList widgets = loader.availableWidgets();
    FormCheck::Classes classes = {{layouts.cbegin(), layouts.cend()}, {widgets.cbegin(), widgets.cend()}};
    for (const CustomClass& entry : customClasses())
        classes.widgets.insert(entry.name);
    return classes;
}

//! Whether Qt can build the form. Finding out takes a quarter of a load, so it is done once for each form.
bool canBuild(const QByteArray& contents, const ZEFUILoader& loader)
{
    constexpr qsizetype maxRemembered = 1000;
    static QSet<size_t> sound;
    const size_t digest = qHash(contents, QHashSeed::globalSeed());
    if (sound.contains(digest))
        return true;
    if (!FormCheck::faultsOf(contents, classesOf(loader)).isEmpty())
        return false;
    if (sound.size() == maxRemembered)
        sound.clear();
    sound.insert(digest);
    return true;
}

//! What a layout asks the widget for, which it does not while the widget is not shown yet.
QSize wantedSize(const QWidget* widget)
{
    return widget->sizeHint()
        .expandedTo(widget->minimumSizeHint())
        .boundedTo(widget->maximumSize())
        .expandedTo(widget->minimumSize());
}

} // namespace

ZEFUIElementPrivate::ZEFUIElementPrivate(ZEFUIElement* element, QWidget* hostWidget)
    : widget(hostWidget)
    , life(element)
{
    if (hostWidget) {
        QFont font = hostWidget->font();
        font.setStyleHint(QFont::System, QFont::PreferDefault);
        hostWidget->setFont(font);
    }
}

ZEFUIElement::ZEFUIElement(QWidget* widget, ZEFUIElement* parentElement, const QString& formName,
                           const QString& locale, ZEFPipeFacilityInvocationContext* context, long clientPID)
    : d(std::make_unique<ZEFUIElementPrivate>(this, widget))
{
    d->clientPID = clientPID;
    ZEFBase::logDebug(QStringLiteral("ZEFUIElement with parent: %1").arg(hexAddress(parentElement)));
    if (parentElement) {
        ZEFBase::logDebug(QStringLiteral("  adding child %1").arg(hexAddress(this)));
        parentElement->addChildElement(this);
    }
    QObject::connect(&d->housekeepingTimer, "2timeout()", this, "1housekeeping()");
    // The signal is misspelt on purpose: Qt refuses the connection, and the element never hears of the
    // widget's death in this way. d->widget guards itself.
    if (widget)
        QObject::connect(widget, "2destoyed()", this, "1widgetDestroyed()");
    d->housekeepingTimer.start(housekeepingInterval);
    setLocale(locale);
    ZEFBase::logDebug(QStringLiteral("ZEFUIElement setFormPath: %1").arg(formName));
    setFormPath(formName);
    setContext(context);
    ZEFTranslatorCache::retain();
}

ZEFUIElement::ZEFUIElement(QWidget* widget, ZEFUIElement* parentElement,
                           ZEFPipeFacilityInvocationContext* context, long clientPID)
    : d(std::make_unique<ZEFUIElementPrivate>(this, widget))
{
    d->clientPID = clientPID;
    if (parentElement)
        parentElement->addChildElement(this);
    // Misspelt on purpose, as above.
    if (widget)
        QObject::connect(widget, "2destoyed()", this, "1widgetDestroyed()");
    QObject::connect(&d->housekeepingTimer, "2timeout()", this, "1housekeeping()");
    d->housekeepingTimer.start(housekeepingInterval);
    setContext(context);
    ZEFTranslatorCache::retain();
}

QObject* ZEFUIElement::delegate() const
{
    return d->delegate;
}

void ZEFUIElement::setDelegate(QObject* delegate)
{
    if (d->delegate)
        makeOrBreakConnections(false);
    d->delegate = delegate;
    if (d->delegate)
        makeOrBreakConnections(true);
}

long ZEFUIElement::clientPID() const
{
    return d->clientPID;
}

void ZEFUIElement::setClientPID(long pid)
{
    d->clientPID = pid;
}

void ZEFUIElement::setSecondary(bool secondary)
{
    d->secondary = secondary;
}

ZEFPipeFacilityInvocationContext* ZEFUIElement::context() const
{
    return d->context;
}

void ZEFUIElement::setContext(ZEFPipeFacilityInvocationContext* context)
{
    d->context = context;
}

QWidget* ZEFUIElement::widget() const
{
    return d->widget;
}

QString ZEFUIElement::formPath() const
{
    return d->formPath;
}

bool ZEFUIElement::loaded() const
{
    return d->loaded;
}

QString ZEFUIElement::styleSheetPath() const
{
    return d->styleSheetPath;
}

void ZEFUIElement::setLocale(const QString& locale)
{
    d->locale = locale;
    Q_EMIT localeChanged();
}

QString ZEFUIElement::locale() const
{
    return d->locale;
}

void ZEFUIElement::setFormPath(const QString& name)
{
    d->loaded = false;
    if (!d->widget)
        return;
    const QPointer<ZEFUIElement> self(this);
    d->formRoot.release();
    const bool wasFixed =
        d->widget->layout() && d->widget->layout()->sizeConstraint() == QLayout::SetFixedSize;

    // The old form's end may have loaded another form in here: the last name asked for stays the only one.
    while (const QPointer<QLayout> layout = d->widget->layout()) {
        const std::unique_ptr<QLayoutItem> item(layout->takeAt(0));
        const QPointer<QWidget> oldForm(item ? item->widget() : nullptr);
        connectWidgetTree(false, oldForm);
        if (!self)
            return;
        d->loaded = false;
        delete oldForm;
        if (!self || !d->widget)
            return;
        delete layout;
        d->loaded = false;
    }
    if (wasFixed) {
        // The layout leaves behind what it had fixed, and the next form is another size.
        d->widget->setMinimumSize(0, 0);
        d->widget->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }

    d->formName.clear();
    d->formPath = resourcePath(QStringLiteral("forms"), name, QStringLiteral("ui"));
    ZEFBase::logDebug(QStringLiteral("Loading form %1 for locale %2").arg(name, d->locale));
    const TranslatorInForce translator(
        ZEFTranslatorCache::translatorForLocale(QStringLiteral("zefmain.qm"), d->locale));

    ZEFUILoader loader(nullptr);
    QFile file(d->formPath);
    if (!file.open(QIODevice::ReadOnly)) {
        writeDebug(QStringLiteral("Could not open file %1 for reading").arg(d->formPath));
        return;
    }
    QBuffer contents;
    contents.setData(file.readAll());
    QPointer<QWidget> form;
    if (canBuild(contents.data(), loader) && contents.open(QIODevice::ReadOnly))
        form = loader.load(&contents, d->widget);
    if (!self || !d->widget)
        return;
    if (!form) {
        writeDebug(QStringLiteral("Could not load UI file: %1").arg(d->formPath));
        return;
    }
    d->formRoot.adopt(form);
    if (!self || !d->widget || !form)
        return;
    auto* layout = new QVBoxLayout;
    d->widget->setLayout(layout);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(form);
    connectWidgetTree(true, form);
    // A slot that a style sheet set off may have closed the host, or loaded another form.
    if (!self || !form)
        return;
    d->loaded = true;
    d->formName = QFileInfo(name).baseName();
    describeFields(form);
    form->setLocale(QLocale(d->locale));
    if (wasFixed && self && d->widget && form)
        d->widget->resize(wantedSize(form));
}

void ZEFUIElement::setWidgetStyleSheet(QWidget* widget, const QString& name)
{
    if (!widget)
        return;
    const QString path = resourcePath(QStringLiteral("css"), name.isEmpty() ? widget->objectName() : name,
                                      QStringLiteral("css"));
    QFile file(path);
    if (!file.exists() || !file.open(QIODevice::ReadOnly))
        return;
    ZEFBase::logDebug(QStringLiteral("Found CSS: %1").arg(path));
    const QString styleSheet = QString::fromUtf8(file.readAll());
    if (styleSheet.isEmpty())
        return;
    ZEFBase::logDebug(QStringLiteral("Setting widget style sheet: %1").arg(path));
    setWidgetProperty(widget, QStringLiteral("styleSheet"), styleSheet);
}

void ZEFUIElement::setStyleSheetPath(const QString& path)
{
    // The sheet is not applied, unlike in setWidgetStyleSheet(), so there is no use in reading it; and a
    // path may name something that never ends, so it is not even opened. Only the path is kept.
    d->styleSheetPath = path;
}
