#include "element/customClasses.h"

#include <ZEFTest.h>

#include <ZEFEllipsisLabel.h>

#include <QtCore/QBuffer>
#include <QtCore/QPluginLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

//! Builds a form as Designer does: the plug-in makes the widgets of its classes.
class PluginLoader : public QUiLoader {
public:
    explicit PluginLoader(const QList<QDesignerCustomWidgetInterface*>& widgets)
        : m_widgets(widgets)
    {
        clearPluginPaths();
    }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override
    {
        for (QDesignerCustomWidgetInterface* widget : m_widgets) {
            if (widget->name() != className)
                continue;
            QWidget* created = widget->createWidget(parent);
            created->setObjectName(name);
            return created;
        }
        return QUiLoader::createWidget(className, parent, name);
    }

private:
    QList<QDesignerCustomWidgetInterface*> m_widgets;
};

} // namespace

class TestDesignerPlugin : public ZEFTest {
    Q_OBJECT

private:
    QList<QDesignerCustomWidgetInterface*> widgets()
    {
        auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(m_loader.instance());
        return collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface*>();
    }
    QDesignerCustomWidgetInterface* widget(const QString& className)
    {
        const auto all = widgets();
        const auto found = std::find_if(all.begin(), all.end(),
                                        [&](auto* candidate) { return candidate->name() == className; });
        return found == all.end() ? nullptr : *found;
    }
    std::unique_ptr<QWidget> dropped(const QString& className)
    {
        QByteArray form = widget(className)->domXml().toUtf8();
        QBuffer buffer(&form);
        buffer.open(QIODevice::ReadOnly);
        return std::unique_ptr<QWidget>(PluginLoader(widgets()).load(&buffer));
    }

    QPluginLoader m_loader{QStringLiteral(PLUGIN_FILE)};

private Q_SLOTS:
    void loads()
    {
        QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
        QVERIFY(qobject_cast<QDesignerCustomWidgetCollectionInterface*>(m_loader.instance()));
    }

    void offersTheClassesOfTheLoader()
    {
        QStringList offered;
        for (const auto* candidate : widgets())
            offered.append(candidate->name());
        QStringList known;
        for (const CustomClass& customClass : customClasses())
            known.append(customClass.name);
        QCOMPARE(known.size(), 10);
        QCOMPARE(offered, known);
    }

    void describes_data() { rows(); }
    void describes()
    {
        QFETCH(QString, className);
        auto* const candidate = widget(className);
        QCOMPARE(candidate->group(), u"ZEFUI"_s);
        QVERIFY(candidate->toolTip().size() > 10);
        QVERIFY(candidate->whatsThis().endsWith(u'.'));
        QCOMPARE(candidate->includeFile(), className + u".h"_s);
        QVERIFY(!candidate->isContainer());
        QVERIFY(candidate->icon().availableSizes().contains(QSize(22, 22)));
        QVERIFY(!candidate->icon().pixmap(22).isNull());
        QVERIFY(!candidate->isInitialized());
        candidate->initialize(nullptr);
        QVERIFY(candidate->isInitialized());
    }

    //! Qt takes the second picture by its name.
    void isSharpOnFineScreens_data() { rows(); }
    void isSharpOnFineScreens()
    {
        QFETCH(QString, className);
        const QString path = u":/zefui/designer/%1%2.png"_s.arg(className.toLower());
        const QImage plain(path.arg(QString()));
        const QImage fine(path.arg(u"@2x"_s));
        QCOMPARE(plain.size(), QSize(22, 22));
        QCOMPARE(fine.size(), QSize(44, 44));
        QVERIFY2(fine != plain.scaled(44, 44), "only enlarged");
        // It shows the same: no part of the one is far from the other.
        const QImage small = fine.scaled(11, 11, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                 .convertToFormat(QImage::Format_ARGB32);
        const QImage other = plain.scaled(11, 11, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                 .convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < 11; ++y) {
            for (int x = 0; x < 11; ++x)
                QVERIFY2(qAbs(qAlpha(small.pixel(x, y)) - qAlpha(other.pixel(x, y))) < 140,
                         qPrintable(u"at %1, %2"_s.arg(x).arg(y)));
        }
    }

    void hasAnIconOfItsOwn()
    {
        QList<QImage> icons;
        for (const auto* candidate : widgets()) {
            const QImage icon = candidate->icon().pixmap(22).toImage();
            QVERIFY2(!icons.contains(icon), qPrintable(candidate->name()));
            icons.append(icon);
        }
    }

    void creates_data() { rows(); }
    void creates()
    {
        QFETCH(QString, className);
        QWidget parent;
        QWidget* created = widget(className)->createWidget(&parent);
        QCOMPARE(created->parentWidget(), &parent);
        // Designer compares it with the name of the class.
        QCOMPARE(QString::fromLatin1(created->metaObject()->className()), className);
    }

    void startsUsable_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("objectName");
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QSize>("size");
        const auto row = [](const char* className, const char* objectName, const char* property,
                            const char* value, QSize size) {
            QTest::newRow(className) << QString::fromLatin1(className) << QString::fromLatin1(objectName)
                                     << QString::fromLatin1(property) << QString::fromLatin1(value) << size;
        };
        row("ZEFCommandLinkButton", "commandLinkButton", "title", "Title", {240, 64});
        row("ZEFToggleButton", "toggleButton", "offText", "Off", {120, 32});
        row("ZEFFormatCell", "formatCell", "text", "", {80, 28});
        row("ZEFFormatEdit", "formatEdit", "format", "{4}(\\d*)-{4}(\\d*)", {180, 32});
        row("ZEFEllipsisLabel", "ellipsisLabel", "text", "A text that may be long", {160, 20});
        row("ZEFHyperlinkLabel", "hyperlinkLabel", "text", "<a href=\"https://example.org/\">Link</a>",
            {160, 20});
        row("ZEFFlatButton", "flatButton", "text", "Flat button", {100, 24});
        row("ZEFLightStdSSButton", "styledButton", "text", "Button", {96, 28});
        row("ZEFLightStdSSCheckbox", "styledCheckBox", "text", "Check box", {160, 24});
        row("ZEFLightStdButton", "paintedButton", "text", "Button", {96, 28});
    }
    void startsUsable()
    {
        QFETCH(QString, className);
        QFETCH(QString, objectName);
        QFETCH(QString, property);
        QFETCH(QString, value);
        QFETCH(QSize, size);
        const auto created = dropped(className);
        QVERIFY(created);
        QCOMPARE(QString::fromLatin1(created->metaObject()->className()), className);
        QCOMPARE(created->objectName(), objectName);
        QVERIFY2(!objectName.contains(u'_'), "neither a delegate nor a service can address it");
        QCOMPARE(created->property(property.toLatin1().constData()).toString(), value);
        // The format edit grows to the width of its cells.
        QCOMPARE(created->size().expandedTo(size), created->size());
        if (className != "ZEFFormatEdit"_L1)
            QCOMPARE(created->size(), size);
    }

    void startsSafe()
    {
        const auto label = dropped(u"ZEFEllipsisLabel"_s);
        QCOMPARE(label->property("textFormat").toInt(), int(Qt::PlainText));
        const auto button = dropped(u"ZEFFlatButton"_s);
        QCOMPARE(button->property("textFormat").toInt(), int(Qt::PlainText));
        QCOMPARE(button->focusPolicy(), Qt::StrongFocus);
    }

    //! Whatever the user's font; in a layout, which asks for what the class itself gets wrong.
    void startsReadable_data()
    {
        QTest::addColumn<int>("points");
        for (const int points : {9, 14, 20})
            QTest::addRow("%d points", points) << points;
    }
    void startsReadable()
    {
        QFETCH(int, points);
        QWidget form;
        QFont font = form.font();
        font.setPointSize(points);
        form.setFont(font);
        auto* layout = new QVBoxLayout(&form);
        auto* link = dropped(u"ZEFCommandLinkButton"_s).release();
        layout->addWidget(link);
        auto* checkBox = dropped(u"ZEFLightStdSSCheckbox"_s).release();
        layout->addWidget(checkBox);
        form.show();
        for (const QLabel* label : link->findChildren<QLabel*>()) {
            if (label->text().isEmpty())
                continue;
            QVERIFY2(label->height() >= label->fontMetrics().height(), qPrintable(label->text()));
            QVERIFY(link->rect().contains(label->geometry()));
        }
        // Each layout makes it taller; here that ends.
        for (int i = 0; i < 20; ++i) {
            checkBox->updateGeometry();
            QCoreApplication::sendPostedEvents();
        }
        QVERIFY(checkBox->height() >= checkBox->fontMetrics().height());
        QVERIFY(checkBox->height() <= 2 * checkBox->fontMetrics().height());
    }

    void startsWithinReach()
    {
        for (const QString& name : {u"ZEFFormatEdit"_s, u"ZEFHyperlinkLabel"_s, u"ZEFFlatButton"_s})
            QCOMPARE(dropped(name)->focusPolicy(), Qt::StrongFocus);
        QApplication::setLayoutDirection(Qt::RightToLeft);
        const Qt::LayoutDirection direction = dropped(u"ZEFFormatEdit"_s)->layoutDirection();
        QApplication::setLayoutDirection(Qt::LeftToRight);
        QCOMPARE(direction, Qt::LeftToRight);
    }

    //! Designer would save the cut text.
    void cutsNoTextInDesigner()
    {
        QWidget form;
        form.resize(300, 100);
        auto* label = static_cast<QLabel*>(widget(u"ZEFEllipsisLabel"_s)->createWidget(&form));
        label->setText(u"A text that is far too long for its label"_s);
        label->setFixedWidth(40);
        form.grab();
        QCOMPARE(label->text(), u"A text that is far too long for its label"_s);
        QCOMPARE(label->toolTip(), QString());
        label->setText(u"Another text that is far too long"_s);
        form.grab();
        QCOMPARE(label->text(), u"Another text that is far too long"_s);
    }

    void namesPropertiesThatExist_data() { rows(); }
    void namesPropertiesThatExist()
    {
        QFETCH(QString, className);
        const std::unique_ptr<QWidget> created(widget(className)->createWidget(nullptr));
        const QMetaObject* metaObject = created->metaObject();
        QXmlStreamReader xml(widget(className)->domXml());
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == "property"_L1 || xml.name() == "stringpropertyspecification"_L1) {
                const QByteArray name = xml.attributes().value("name"_L1).toLatin1();
                const int index = metaObject->indexOfProperty(name.constData());
                QVERIFY2(index >= 0, name.constData());
                QVERIFY2(metaObject->property(index).isWritable(), name.constData());
            }
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    }

    void editsTheFormatAsCode()
    {
        const QString xml = widget(u"ZEFFormatEdit"_s)->domXml();
        QVERIFY(xml.contains(
            u"<stringpropertyspecification name=\"format\" notr=\"true\" type=\"singleline\"/>"_s));
        QVERIFY(xml.contains(
            u"<stringpropertyspecification name=\"ignore\" notr=\"true\" type=\"singleline\"/>"_s));
    }

    //! A base that only the library knows would hide the base class's properties in Designer.
    void extendsAClassOfQt_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("base");
        QTest::newRow("of a base of its own") << u"ZEFLightStdButton"_s << u"QPushButton"_s;
        QTest::newRow("check box") << u"ZEFLightStdSSCheckbox"_s << u"QCheckBox"_s;
        QTest::newRow("label") << u"ZEFHyperlinkLabel"_s << u"QLabel"_s;
        QTest::newRow("widget") << u"ZEFToggleButton"_s << u"QWidget"_s;
    }
    void extendsAClassOfQt()
    {
        QFETCH(QString, className);
        QFETCH(QString, base);
        QVERIFY(widget(className)->domXml().contains(u"<extends>%1</extends>"_s.arg(base)));
    }

private:
    static void rows()
    {
        QTest::addColumn<QString>("className");
        for (const CustomClass& customClass : customClasses())
            QTest::newRow(customClass.name.data()) << QString(customClass.name);
    }
};

ZEF_TEST_MAIN(TestDesignerPlugin)
#include "test_designerplugin.moc"
