// What people see who have changed their desktop to see better: measured in pictures of the demo forms and
// of the gallery.

#include "Picture.h"
#include "examples/gallery/Page.h"
#include "examples/gallery/pages.h"
#include "tools/common/Looks.h"
#include "tools/preview/FormPreview.h"
#include "tools/preview/PseudoTranslation.h"

#include <ZEFTest.h>

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>
#include <ZEFUIDialog.h>

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr double leastTextContrast = 4.5;
constexpr double leastPartContrast = 3;

const QStringList forms{u"signin"_s, u"activation"_s, u"confirmation"_s};

const QString folder = QStringLiteral(FORM_SERVICE);

PreviewOptions optionsFor(const QString& form, const QString& locale)
{
    PreviewOptions options;
    options.form = folder + u"/forms/"_s + form + u".ui"_s;
    options.locale = locale;
    options.styleSheets = folder + u"/css"_s;
    options.translations = folder + u"/i18n"_s;
    options.values = folder + u"/demo/values.json"_s;
    return options;
}

//! Of a check box, beside its box.
QRect textRectOf(const QCheckBox* box)
{
    QStyleOptionButton option;
    option.initFrom(box);
    option.text = box->text();
    return box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box);
}

QRect indicatorOf(const QCheckBox* box)
{
    QStyleOptionButton option;
    option.initFrom(box);
    return box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
}

//! The part of the widget that holds nothing but its text; empty when it shows none.
QRect textRectOf(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text().isEmpty() ? QRect() : label->contentsRect().adjusted(2, 2, -2, -2);
    if (const auto* box = qobject_cast<const QCheckBox*>(widget))
        return textRectOf(box);
    if (const auto* button = qobject_cast<const QPushButton*>(widget))
        return button->text().isEmpty() ? QRect() : button->rect().adjusted(5, 5, -5, -5);
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return edit->text().isEmpty() ? QRect() : edit->rect().adjusted(4, 4, -4, -4);
    if (const auto* view = qobject_cast<const QAbstractItemView*>(widget->parentWidget());
        view && view->viewport() == widget)
        return widget->rect();
    return QRect();
}

QList<QWidget*> visibleChildren(const QWidget* window)
{
    QList<QWidget*> visible = window->findChildren<QWidget*>();
    visible.removeIf([](const QWidget* widget) { return !widget->isVisible(); });
    return visible;
}

QString describe(const QWidget* widget)
{
    return QLatin1String(widget->metaObject()->className()) + u' ' + widget->objectName() + u" \""
        + widget->property("text").toString() + u'"';
}

void checkTexts(QWidget* window)
{
    const Picture picture(window);
    int texts = 0;
    for (const QWidget* widget : visibleChildren(window)) {
        const QRect rect = textRectOf(widget);
        // A disabled control may be pale: that says that it is of no use now.
        if (rect.isEmpty() || !widget->isEnabled())
            continue;
        ++texts;
        const double ratio = picture.textContrast(widget, rect);
        QVERIFY2(ratio >= leastTextContrast, qPrintable(u"%1: %2 to 1"_s.arg(describe(widget)).arg(ratio)));
    }
    QVERIFY(texts > 0);
}

//! The size that the widget needs to show its text, as far as it depends on it.
QSize neededSize(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        if (label->text().isEmpty())
            return QSize(0, 0);
        if (label->wordWrap())
            return QSize(0, label->heightForWidth(label->width()));
        return qobject_cast<const ZEFEllipsisLabel*>(label) ? QSize(0, label->sizeHint().height())
                                                            : label->sizeHint();
    }
    if (const auto* box = qobject_cast<const QCheckBox*>(widget)) {
        const QRect text = textRectOf(box);
        return box->fontMetrics()
                   .boundingRect(0, 0, text.width(), QWIDGETSIZE_MAX, Qt::TextWordWrap | Qt::TextShowMnemonic,
                                 box->text())
                   .size()
            + box->size() - text.size();
    }
    if (qobject_cast<const ZEFCommandLinkButton*>(widget))
        return QSize(0, 0);
    // It draws its text over its edges, and has one height.
    if (widget->inherits("ZEFStdButton"))
        return widget->sizeHint();
    if (const auto* button = qobject_cast<const QPushButton*>(widget)) {
        QStyleOptionButton option;
        option.initFrom(button);
        const QRect contents =
            button->style()->subElementRect(QStyle::SE_PushButtonContents, &option, button);
        return button->fontMetrics().size(Qt::TextShowMnemonic, button->text()) + button->size()
            - contents.size();
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return QSize(edit->maxLength() < 20 ? edit->fontMetrics().horizontalAdvance(edit->text()) + 6 : 0,
                     edit->sizeHint().height());
    return QSize(0, 0);
}

void checkRoom(const QWidget* window)
{
    const QList<QWidget*> widgets = visibleChildren(window);
    for (const QWidget* widget : widgets) {
        // Qt's own business, and it scrolls.
        if (widget->parentWidget()->inherits("QCalendarWidget")
            || widget->parentWidget()->inherits("QAbstractScrollArea"))
            continue;
        const QSize needed = neededSize(widget);
        QVERIFY2(needed.width() <= widget->width() && needed.height() <= widget->height(),
                 qPrintable(u"%1 needs %2 x %3, has %4 x %5"_s.arg(describe(widget))
                                .arg(needed.width())
                                .arg(needed.height())
                                .arg(widget->width())
                                .arg(widget->height())));
        QVERIFY2(widget->parentWidget()->rect().contains(widget->geometry()), qPrintable(describe(widget)));
        for (const QWidget* other : widgets) {
            if (other == widget || other->parentWidget() != widget->parentWidget()
                || other->parentWidget()->inherits("QCalendarWidget"))
                continue;
            QVERIFY2(!other->geometry().intersects(widget->geometry()),
                     qPrintable(describe(widget) + u" overlaps "_s + describe(other)));
        }
    }
}

//! What a user may have entered, and everything that can be used, so that all of it is measured.
void fillIn(ZEFUIDialog* dialog)
{
    for (auto* key : dialog->findChildren<ZEFFormatEdit*>()) {
        QVERIFY(key->setText(u"7K02-M3QX-9PLD-5T8R-PR"_s));
        // As the service does.
        key->setCellBottomHighlight(2, key->palette().color(QPalette::Highlight));
    }
    for (auto* button : dialog->findChildren<QPushButton*>())
        button->setEnabled(true);
    QCoreApplication::processEvents();
}

void addPaletteColumn()
{
    QTest::addColumn<QPalette>("palette");
}

QList<std::pair<QString, QPalette>> palettes()
{
    return {{u"light"_s, QApplication::style()->standardPalette()},
            {u"dark"_s, Looks::darkPalette()},
            {u"high contrast"_s, Looks::highContrastPalette()}};
}

//! A page of the gallery in a window of its own, in all its states.
struct ShownPage {
    explicit ShownPage(const QString& className)
    {
        for (Page* created : createPages()) {
            if (created->className() == className)
                page = created;
            else
                delete created;
        }
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(page);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
        window.resize(window.sizeHint());
        QCoreApplication::processEvents();
        page->bringStates();
        QCoreApplication::processEvents();
    }

    QWidget window;
    Page* page = nullptr;
};

QStringList pageNames()
{
    QStringList names;
    for (Page* page : createPages()) {
        names.append(page->className());
        delete page;
    }
    return names;
}

} // namespace

class LooksTest : public ZEFTest {
    Q_OBJECT

private:
    void prepare() override;
    void tidyUp() override;

private Q_SLOTS:
    void contrastIsAsDefined();
    void measuresWhatIsThere();
    void seesWhatIsCut();

    void formsAreReadable_data();
    void formsAreReadable();
    void formsStayReadableWhenTheDesktopChanges_data();
    void formsStayReadableWhenTheDesktopChanges();
    void boxesAndFieldsCanBeSeen_data();
    void boxesAndFieldsCanBeSeen();
    void theFocusCanBeSeen_data();
    void theFocusCanBeSeen();
    void theGalleryIsReadable_data();
    void theGalleryIsReadable();
    void nothingOfAFormIsCut_data();
    void nothingOfAFormIsCut();
    void nothingOfTheGalleryIsCut_data();
    void nothingOfTheGalleryIsCut();
    void formsFitSmallScreens_data();
    void formsFitSmallScreens();
    void theGalleryIsSharp_data();
    void theGalleryIsSharp();
    void atOtherScales_data();
    void atOtherScales();

private:
    QFont m_font;
    QPalette m_palette;
    QString m_error;
};

void LooksTest::prepare()
{
    TestLog::allow(QRegularExpression(u"debug: .*"_s));
    TestLog::allow(QRegularExpression(u"warning: QObject::connect: .*"_s));
    TestLog::allow(u"warning: This plugin does not support propagateSizeHints()"_s);
    m_font = QApplication::font();
    m_palette = QApplication::palette();
}

void LooksTest::tidyUp()
{
    QApplication::setFont(m_font);
    QApplication::setLayoutDirection(Qt::LeftToRight);
    Looks::apply(m_palette);
}

void LooksTest::contrastIsAsDefined()
{
    QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrast(Qt::white, Qt::white), 1.0);
    QCOMPARE(qRound(100 * contrast(QColor(0x77, 0x77, 0x77), Qt::white)), 448);
    QCOMPARE(qRound(100 * contrast(Qt::white, QColor(0x76, 0x76, 0x76))), 454);
}

void LooksTest::measuresWhatIsThere()
{
    QWidget window;
    window.setStyleSheet(u"background: #ffffff"_s);
    auto* label = new QLabel(u"Some text of no great length"_s, &window);
    label->adjustSize();
    window.resize(300, 50);
    const auto measured = [&](const QString& color) {
        label->setStyleSheet(u"color: "_s + color);
        return Picture(&window).textContrast(label, label->rect());
    };
    QCOMPARE(qRound(10 * measured(u"#777777"_s)), 45);
    QCOMPARE(qRound(10 * measured(u"#1d5fa8"_s)), 65);
    QCOMPARE(qRound(10 * measured(u"#ffffff"_s)), 10);
}

void LooksTest::seesWhatIsCut()
{
    QWidget window;
    window.resize(300, 100);
    auto* label = new QLabel(u"Some text"_s, &window);
    label->adjustSize();
    window.show();
    const QSize enough = label->size();
    QCOMPARE(neededSize(label), enough);
    label->resize(enough - QSize(1, 0));
    QVERIFY(neededSize(label).width() > label->width());
    auto* button = new QPushButton(u"Some text"_s, &window);
    button->adjustSize();
    QVERIFY(neededSize(button).width() <= button->width());
    button->setText(u"Some text that is much longer"_s);
    QVERIFY(neededSize(button).width() > button->width());
}

void LooksTest::formsAreReadable_data()
{
    QTest::addColumn<QString>("form");
    addPaletteColumn();
    for (const QString& form : forms) {
        for (const auto& [name, palette] : palettes())
            QTest::newRow(qPrintable(form + u", "_s + name)) << form << palette;
    }
}

void LooksTest::formsAreReadable()
{
    QFETCH(const QString, form);
    QFETCH(const QPalette, palette);
    Looks::apply(palette);
    FormPreview preview(optionsFor(form, u"en"_s));
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    fillIn(preview.dialog());
    checkTexts(preview.dialog());
}

void LooksTest::formsStayReadableWhenTheDesktopChanges_data()
{
    formsAreReadable_data();
}

void LooksTest::formsStayReadableWhenTheDesktopChanges()
{
    QFETCH(const QString, form);
    QFETCH(const QPalette, palette);
    FormPreview preview(optionsFor(form, u"en"_s));
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    fillIn(preview.dialog());
    Looks::apply(palette);
    QCoreApplication::processEvents();
    checkTexts(preview.dialog());
}

void LooksTest::boxesAndFieldsCanBeSeen_data()
{
    addPaletteColumn();
    for (const auto& [name, palette] : palettes())
        QTest::newRow(qPrintable(name)) << palette;
}

void LooksTest::boxesAndFieldsCanBeSeen()
{
    QFETCH(const QPalette, palette);
    Looks::apply(palette);
    FormPreview signIn(optionsFor(u"signin"_s, u"en"_s));
    QVERIFY2(signIn.load(&m_error), qPrintable(m_error));
    auto* box = signIn.dialog()->findChild<QCheckBox*>();
    signIn.dialog()->findChild<QPushButton*>(u"cancelButton"_s)->setFocus();
    QCoreApplication::processEvents();
    const QRectF indicator = indicatorOf(box);
    const QPointF edge(indicator.left() + 0.5, indicator.center().y());
    const QPointF outside(indicator.left() - 1, indicator.center().y());
    const Picture picture(signIn.dialog());
    QVERIFY(contrast(picture.colorAt(box, edge), picture.colorAt(box, outside)) >= leastPartContrast);
    const QRect inside = indicator.toRect().adjusted(2, 2, -2, -2);
    QVERIFY(picture.textContrast(box, inside) >= leastPartContrast);
    box->setChecked(false);
    QCOMPARE(Picture(signIn.dialog()).textContrast(box, inside), 1.0);

    FormPreview activation(optionsFor(u"activation"_s, u"en"_s));
    QVERIFY2(activation.load(&m_error), qPrintable(m_error));
    activation.dialog()->findChild<QPushButton*>(u"cancelButton"_s)->setFocus();
    QCoreApplication::processEvents();
    for (QWidget* window : {signIn.dialog(), activation.dialog()}) {
        const Picture fields(window);
        for (const auto* field : window->findChildren<QLineEdit*>()) {
            // A corner of a dashed border may be a gap.
            double best = 1;
            for (int y = 4; y < field->height() - 4; ++y) {
                best = qMax(best,
                            contrast(fields.colorAt(field, QPointF(0.5, y + 0.5)),
                                     fields.colorAt(field, QPointF(-1.5, y + 0.5))));
            }
            QVERIFY2(best >= leastPartContrast, qPrintable(u"%1: %2"_s.arg(describe(field)).arg(best)));
        }
    }
}

void LooksTest::theFocusCanBeSeen_data()
{
    formsAreReadable_data();
}

void LooksTest::theFocusCanBeSeen()
{
    QFETCH(const QString, form);
    QFETCH(const QPalette, palette);
    Looks::apply(palette);
    FormPreview preview(optionsFor(form, u"en"_s));
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    QWidget* window = preview.dialog();
    fillIn(preview.dialog());
    window->activateWindow();
    QTRY_VERIFY(window->isActiveWindow());
    int stops = 0;
    for (QWidget* widget : visibleChildren(window)) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy())
            continue;
        ++stops;
        if (window->focusWidget())
            window->focusWidget()->clearFocus();
        QCoreApplication::processEvents();
        const Picture without(window);
        widget->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        const Picture with(window);
        // A line of one pixel around it, but for its round corners.
        const double ring = 2 * (widget->width() + widget->height());
        const double changed = with.changedArea(without, widget);
        QVERIFY2(changed >= 0.85 * ring,
                 qPrintable(u"%1: %2 of %3"_s.arg(describe(widget)).arg(changed).arg(ring)));
    }
    QVERIFY(stops >= 2);
}

void LooksTest::theGalleryIsReadable_data()
{
    QTest::addColumn<QString>("page");
    addPaletteColumn();
    for (const QString& page : pageNames()) {
        for (const auto& [name, palette] : palettes())
            QTest::newRow(qPrintable(page + u", "_s + name)) << page << palette;
    }
}

void LooksTest::theGalleryIsReadable()
{
    QFETCH(const QString, page);
    QFETCH(const QPalette, palette);
    Looks::apply(palette);
    ShownPage shown(page);
    checkTexts(&shown.window);
}

void LooksTest::nothingOfAFormIsCut_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("isReversed");
    QTest::addColumn<bool>("isPseudoTranslated");
    for (const QString& form : forms) {
        for (const int points : {9, 14, 20}) {
            const auto row = [&](const QString& what, const QString& locale, bool isReversed, bool isPseudo) {
                QTest::addRow("%s, %s, %d points", qPrintable(form), qPrintable(what), points)
                    << form << locale << points << isReversed << isPseudo;
            };
            row(u"English"_s, u"en"_s, false, false);
            row(u"German"_s, u"de"_s, false, false);
            row(u"from right to left"_s, u"en"_s, true, false);
            row(u"pseudo-translated"_s, u"en"_s, false, true);
        }
    }
}

void LooksTest::nothingOfAFormIsCut()
{
    QFETCH(const QString, form);
    QFETCH(const QString, locale);
    QFETCH(const int, points);
    QFETCH(const bool, isReversed);
    QFETCH(const bool, isPseudoTranslated);
    Looks::setFontSize(points);
    PreviewOptions options = optionsFor(form, locale);
    options.isReversed = isReversed;
    options.isPseudoTranslated = isPseudoTranslated;
    FormPreview preview(options);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    fillIn(preview.dialog());
    checkRoom(preview.dialog());
}

void LooksTest::nothingOfTheGalleryIsCut_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("isReversed");
    QTest::addColumn<bool>("isPseudoTranslated");
    for (const QString& page : pageNames()) {
        for (const int points : {9, 14, 20})
            QTest::addRow("%s, %d points", qPrintable(page), points) << page << points << false << false;
        QTest::addRow("%s, from right to left", qPrintable(page)) << page << 9 << true << false;
        QTest::addRow("%s, pseudo-translated", qPrintable(page)) << page << 9 << false << true;
    }
}

void LooksTest::nothingOfTheGalleryIsCut()
{
    QFETCH(const QString, page);
    QFETCH(const int, points);
    QFETCH(const bool, isReversed);
    QFETCH(const bool, isPseudoTranslated);
    Looks::setFontSize(points);
    QApplication::setLayoutDirection(isReversed ? Qt::RightToLeft : Qt::LeftToRight);
    PseudoTranslator translator{QLatin1String(galleryContext)};
    if (isPseudoTranslated)
        QCoreApplication::installTranslator(&translator);
    const ShownPage shown(page);
    checkRoom(&shown.window);
}

void LooksTest::formsFitSmallScreens_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("locale");
    for (const QString& form : forms) {
        for (const QString& locale : {u"en"_s, u"de"_s})
            QTest::newRow(qPrintable(form + u' ' + locale)) << form << locale;
    }
}

//! Of 1280 x 720 pixels at a scale of 2, of which a title and a task bar take their part.
void LooksTest::formsFitSmallScreens()
{
    QFETCH(const QString, form);
    QFETCH(const QString, locale);
    FormPreview preview(optionsFor(form, locale));
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    constexpr QSize screen(1280 / 2, 720 / 2);
    constexpr int titleAndTaskBar = 32 + 48;
    const QSize size = preview.dialog()->size();
    QVERIFY(size.width() <= screen.width());
    QVERIFY2(size.height() <= screen.height() - titleAndTaskBar, qPrintable(QString::number(size.height())));
}

void LooksTest::theGalleryIsSharp_data()
{
    QTest::addColumn<QString>("page");
    for (const QString& page : pageNames())
        QTest::newRow(qPrintable(page)) << page;
}

//! A picture that was drawn for a coarser screen and then enlarged is blurred or has steps.
void LooksTest::theGalleryIsSharp()
{
    QFETCH(const QString, page);
    ShownPage shown(page);
    if (shown.window.devicePixelRatio() <= 1)
        QSKIP("Run at another scale below");
    const QImage fine = shown.window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QImage coarse(shown.window.size(), QImage::Format_RGB32);
    shown.window.render(&coarse);
    const double ratio = fine.devicePixelRatio();
    for (const QWidget* widget : shown.page->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        const QPointF corner = QPointF(widget->mapTo(&shown.window, QPoint())) * ratio;
        const QRect area = QRectF(corner, QSizeF(widget->size()) * ratio).toAlignedRect() & fine.rect();
        for (const Qt::TransformationMode mode : {Qt::FastTransformation, Qt::SmoothTransformation}) {
            const QImage enlarged = coarse.scaled(fine.size(), Qt::IgnoreAspectRatio, mode);
            double sum = 0;
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x)
                    sum += qAbs(qGray(fine.pixel(x, y)) - qGray(enlarged.pixel(x, y)));
            }
            const double mean = sum / (area.width() * area.height());
            QVERIFY2(mean > 0.2, qPrintable(u"%1: %2"_s.arg(describe(widget)).arg(mean)));
        }
    }
}

void LooksTest::atOtherScales_data()
{
    QTest::addColumn<QByteArray>("scale");
    for (const char* scale : {"1.25", "1.5", "2", "3"})
        QTest::newRow(scale) << QByteArray(scale);
}

//! Qt reads the scale once, when a program starts.
void LooksTest::atOtherScales()
{
    QFETCH(const QByteArray, scale);
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        QSKIP("This is one of them");
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_SCALE_FACTOR"_s, QString::fromLatin1(scale));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {u"nothingOfAFormIsCut"_s, u"nothingOfTheGalleryIsCut"_s, u"theGalleryIsSharp"_s});
    QVERIFY(process.waitForFinished(120000));
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
             process.readAll().constData());
}

ZEF_TEST_MAIN(LooksTest)
#include "test_looks.moc"
