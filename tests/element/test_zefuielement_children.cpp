#include "ElementTest.h"

#include <ZEFCommandLinkButton.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>

#include <QtGui/QPainter>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

class TestZEFUIElementChildren : public ElementTest {
    Q_OBJECT

private:
    void prepare() override
    {
        ElementTest::prepare();
        show(u"names"_s);
    }
    void tidyUp() override { m_host.reset(); }
    void show(const QString& form)
    {
        m_host = std::make_unique<ZEFUIWidget>(form, u"en"_s, nullptr, Qt::WindowFlags(), nullptr);
        TestLog::takeAll();
    }
    ZEFUIElement* element() const { return m_host->element(); }
    template <class Widget = QWidget> Widget* child(const QString& name) const
    {
        return m_host->findChild<Widget*>(name);
    }

    std::unique_ptr<ZEFUIWidget> m_host;

private Q_SLOTS:
    void showsAndHides();
    void displayByNumber_data();
    void displayByNumber();
    void enableIf_data();
    void enableIf();
    void showIf_data();
    void showIf();
    void enables();
    void focuses();
    void readsAndWritesProperties();
    void writeSaysWhetherThePropertyExists();
    void dynamicPropertiesDoNotCount();
    void firstOfTwo();
    void unknownNamesDoNothing();
    void hostIsNeverAMatch();
    void background();
    void backgroundIsStretched();
    void pixmapPropertiesAllOfThem();
    void iconPropertyOnlyTheFirst();
    void pixmapAndIconPropertiesMixed();
    void nothingAfterForgettingTheWidget();
    void nothingIsWrittenToTheLogs();
};

void TestZEFUIElementChildren::showsAndHides()
{
    QWidget* button = child(u"okButton"_s);
    element()->hideChild(u"okButton"_s);
    QVERIFY(button->isHidden());
    element()->showChild(u"okButton"_s);
    QVERIFY(!button->isHidden());
    element()->showChild(u"okButton"_s, false);
    QVERIFY(button->isHidden());
    element()->showChild(u"okButton"_s, true);
    QVERIFY(!button->isHidden());
}

void TestZEFUIElementChildren::displayByNumber_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("wasEnabled");
    QTest::addColumn<bool>("wasHidden");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("0 enables and shows") << u"0"_s << false << true << true << false;
    QTest::newRow("1 disables and shows") << u"1"_s << true << true << false << false;
    QTest::newRow("2 disables and hides") << u"2"_s << true << false << false << true;
    QTest::newRow("3 changes nothing, shown") << u"3"_s << true << false << true << false;
    QTest::newRow("3 changes nothing, hidden") << u"3"_s << false << true << false << true;
    QTest::newRow("-1 changes nothing") << u"-1"_s << false << true << false << true;
    QTest::newRow("2^32 is no number") << u"4294967296"_s << false << true << true << false;
    QTest::newRow("text counts as 0") << u"hide"_s << false << true << true << false;
    QTest::newRow("blanks around") << u" 2 "_s << true << false << false << true;
}

void TestZEFUIElementChildren::displayByNumber()
{
    QFETCH(QString, value);
    QFETCH(bool, wasEnabled);
    QFETCH(bool, wasHidden);
    QWidget* button = child(u"okButton"_s);
    button->setEnabled(wasEnabled);
    button->setHidden(wasHidden);
    ZEFDictionary dictionary{{u"key"_s, value}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->showChild(u"okButton"_s, u"key"_s, &list);
    QTEST(button->isEnabled(), "enabled");
    QTEST(button->isHidden(), "hidden");

    button->setEnabled(false);
    button->setHidden(true);
    element()->showChild(u"okButton"_s, u"unknown key"_s, &list); // counts as 0
    QVERIFY(button->isEnabled());
    QVERIFY(!button->isHidden());

    button->setEnabled(false);
    button->setHidden(true);
    element()->showChild(u"okButton"_s, u"key"_s, nullptr);
    QVERIFY(!button->isEnabled());
    QVERIFY(button->isHidden());
    element()->showChild(u"nobody"_s, u"key"_s, &list);
}

void TestZEFUIElementChildren::enableIf_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("False") << u"False"_s << false;
    QTest::newRow("false") << u"false"_s << true;
    QTest::newRow("False and a blank") << u"False "_s << true;
    QTest::newRow("True") << u"True"_s << true;
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("anything") << u"no"_s << true;
}

void TestZEFUIElementChildren::enableIf()
{
    QFETCH(QString, value);
    QFETCH(bool, enabled);
    QWidget* button = child(u"okButton"_s);
    button->setEnabled(!enabled);
    ZEFDictionary dictionary{{u"key"_s, value}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->enableChildIf(u"okButton"_s, u"key"_s, &list);
    QCOMPARE(button->isEnabled(), enabled);
    button->setEnabled(false);
    element()->enableChildIf(u"okButton"_s, u"unknown key"_s, &list);
    QVERIFY(button->isEnabled());
    button->setEnabled(false);
    element()->enableChildIf(u"okButton"_s, u"key"_s, nullptr);
    QVERIFY(!button->isEnabled());
}

void TestZEFUIElementChildren::showIf_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("True") << u"True"_s << false;
    QTest::newRow("true") << u"true"_s << true;
    QTest::newRow("True and a blank") << u"True "_s << true;
    QTest::newRow("False") << u"False"_s << true;
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("1") << u"1"_s << true;
}

void TestZEFUIElementChildren::showIf()
{
    QFETCH(QString, value);
    QFETCH(bool, hidden);
    QWidget* button = child(u"okButton"_s);
    button->setHidden(!hidden);
    ZEFDictionary dictionary{{u"key"_s, value}};
    ZEFDictionaryList list;
    list.append(&dictionary);
    element()->showChildIf(u"okButton"_s, u"key"_s, &list);
    QCOMPARE(button->isHidden(), hidden);
    button->setHidden(false);
    element()->showChildIf(u"okButton"_s, u"unknown key"_s, &list);
    QVERIFY(button->isHidden());
    button->setHidden(false);
    element()->showChildIf(u"okButton"_s, u"key"_s, nullptr);
    QVERIFY(!button->isHidden());
}

void TestZEFUIElementChildren::enables()
{
    element()->enableChild(u"okButton"_s, false);
    QVERIFY(!child(u"okButton"_s)->isEnabled());
    element()->enableChild(u"okButton"_s, true);
    QVERIFY(child(u"okButton"_s)->isEnabled());
}

void TestZEFUIElementChildren::focuses()
{
    m_host->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_host.get()));
    m_host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_host.get()));
    element()->setChildFocus(u"count"_s);
    QTRY_VERIFY(child(u"count"_s)->hasFocus());
    element()->setChildFocus(u"nameEdit"_s);
    QTRY_VERIFY(m_host->findChildren<QLineEdit*>(u"nameEdit"_s).at(0)->hasFocus());
}

void TestZEFUIElementChildren::readsAndWritesProperties()
{
    QVERIFY(element()->setChildProperty(u"count"_s, u"value"_s, 5));
    QCOMPARE(element()->childProperty(u"count"_s, u"value"_s), QVariant(5));
    QVERIFY(element()->setChildProperty(u"okButton"_s, u"text"_s, u"100%s"_s));
    QCOMPARE(element()->childProperty(u"okButton"_s, u"text"_s).toString(), u"100%s"_s);
    QVERIFY(!element()->childProperty(u"okButton"_s, u"colour"_s).isValid());
    QVERIFY(!element()->childProperty(u"nobody"_s, u"text"_s).isValid());
    QCOMPARE(ZEFUIElement::widgetProperty(child(u"okButton"_s), u"text"_s).toString(), u"100%s"_s);
    QVERIFY(!ZEFUIElement::widgetProperty(nullptr, u"text"_s).isValid());
}

void TestZEFUIElementChildren::writeSaysWhetherThePropertyExists()
{
    // Refused values still count as written: Qt's own answer is not asked.
    QVERIFY(element()->setChildProperty(u"count"_s, u"value"_s, u"no number"_s));
    QVERIFY(ZEFUIElement::setWidgetProperty(m_host.get(), u"x"_s, 5)); // read only
    QVERIFY(!element()->setChildProperty(u"count"_s, u"colour"_s, 1));
    QVERIFY(!element()->setChildProperty(u"nobody"_s, u"value"_s, 1));
    QVERIFY(!ZEFUIElement::setWidgetProperty(nullptr, u"text"_s, 1));
    QVERIFY(!ZEFUIElement::setWidgetProperty(m_host.get(), QString(), 1));
}

void TestZEFUIElementChildren::dynamicPropertiesDoNotCount()
{
    child(u"okButton"_s)->setProperty("mine", 1);
    QVERIFY(!element()->setChildProperty(u"okButton"_s, u"mine"_s, 2));
    QVERIFY(!element()->childProperty(u"okButton"_s, u"mine"_s).isValid());
    QVERIFY(!element()->setChildProperty(u"okButton"_s, u"fresh"_s, 2));
    QVERIFY(!child(u"okButton"_s)->dynamicPropertyNames().contains("fresh"));
}

void TestZEFUIElementChildren::firstOfTwo()
{
    const QList<QLineEdit*> edits = m_host->findChildren<QLineEdit*>(u"nameEdit"_s);
    element()->setChildProperty(u"nameEdit"_s, u"text"_s, u"changed"_s);
    QCOMPARE(edits.at(0)->text(), u"changed"_s);
    QCOMPARE(edits.at(1)->text(), u"second"_s);
    element()->hideChild(u"nameEdit"_s);
    QVERIFY(edits.at(0)->isHidden());
    QVERIFY(!edits.at(1)->isHidden());
}

void TestZEFUIElementChildren::unknownNamesDoNothing()
{
    ZEFDictionaryList list;
    for (const QString& name : {u"nobody"_s, u"okbutton"_s, u"%s%n"_s, QString(10000, u'x')}) {
        element()->hideChild(name);
        element()->showChild(name);
        element()->showChild(name, true);
        element()->showChild(name, u"key"_s, &list);
        element()->enableChild(name, true);
        element()->enableChildIf(name, u"key"_s, &list);
        element()->showChildIf(name, u"key"_s, &list);
        element()->setChildFocus(name);
        QVERIFY(!element()->setChildProperty(name, u"text"_s, u"x"_s));
        QVERIFY(!element()->childProperty(name, u"text"_s).isValid());
        QVERIFY(!element()->setChildBackground(name, QPixmap(4, 4), true));
    }
}

void TestZEFUIElementChildren::hostIsNeverAMatch()
{
    m_host->setObjectName(u"host"_s);
    m_host->setWindowTitle(u"title"_s);
    QVERIFY(!element()->childProperty(u"host"_s, u"windowTitle"_s).isValid());
}

void TestZEFUIElementChildren::background()
{
    QPixmap pixmap(2, 2);
    pixmap.fill(QColor(1, 2, 3));
    auto* box = child(u"firstGroup"_s);
    box->setAutoFillBackground(false);
    QVERIFY(element()->setChildBackground(u"firstGroup"_s, pixmap, false));
    QVERIFY(box->autoFillBackground());
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QBrush brush = box->palette().brush(group, box->backgroundRole());
        QCOMPARE(brush.texture().size(), QSize(2, 2));
        QCOMPARE(brush.textureImage().pixelColor(0, 0), QColor(1, 2, 3));
    }
    QVERIFY(!element()->setChildBackground(QString(), pixmap, false));
    QVERIFY(element()->setChildBackground(u"firstGroup"_s, QPixmap(), true));
}

void TestZEFUIElementChildren::backgroundIsStretched()
{
    QPixmap pixmap(2, 4);
    pixmap.fill(Qt::red);
    QPainter(&pixmap).fillRect(1, 0, 1, 4, Qt::blue);
    auto* plain = new QWidget(m_host.get());
    plain->setObjectName(u"canvas"_s);
    plain->resize(200, 100);
    QVERIFY(element()->setChildBackground(u"canvas"_s, pixmap, true));
    QCOMPARE(plain->palette().brush(plain->backgroundRole()).texture().size(), QSize(200, 100));
    const QImage picture = plain->grab().toImage();
    const auto scale = picture.devicePixelRatio();
    const auto at = [&](int x, int y) { return picture.pixelColor(qRound(x * scale), qRound(y * scale)); };
    QCOMPARE(at(10, 10), QColor(Qt::red));
    QCOMPARE(at(90, 95), QColor(Qt::red));
    QCOMPARE(at(110, 5), QColor(Qt::blue));
    QCOMPARE(at(190, 95), QColor(Qt::blue));
}

void TestZEFUIElementChildren::pixmapPropertiesAllOfThem()
{
    show(u"labels"_s);
    QPixmap pixmap(3, 3);
    pixmap.fill(Qt::green);
    QVERIFY(!element()->setChildProperties(u"pixmap"_s, pixmap, u"unused"_s));
    for (const QString& name : {u"one"_s, u"two"_s, u"three"_s})
        QCOMPARE(child<QLabel>(name)->pixmap().size(), QSize(3, 3));
    QVERIFY(!element()->setChildProperties(u"text"_s, pixmap, QString()));
    QVERIFY(!element()->setChildProperties(u"colour"_s, pixmap, QString()));
    QVERIFY(!element()->setChildProperties(QString(), pixmap, QString()));
}

void TestZEFUIElementChildren::iconPropertyOnlyTheFirst()
{
    show(u"pictures"_s);
    QPixmap pixmap(3, 3);
    pixmap.fill(Qt::green);
    QVERIFY(element()->setChildProperties(u"icon"_s, pixmap, QString()));
    QVERIFY(!child<QPushButton>(u"first"_s)->icon().isNull());
    QVERIFY(child<QPushButton>(u"second"_s)->icon().isNull());
    QVERIFY(element()->setChildProperties(u"windowIcon"_s, pixmap, QString()));
    QVERIFY(!child(u"picturesForm"_s)->windowIcon().isNull());
    QVERIFY(!child<QLabel>(u"one"_s)->testAttribute(Qt::WA_SetWindowIcon));
}

void TestZEFUIElementChildren::pixmapAndIconPropertiesMixed()
{
    show(u"labels"_s);
    ZEFCommandLinkButton first(m_host.get()); // its icon is a pixmap
    QPushButton push(m_host.get());
    ZEFCommandLinkButton last(m_host.get());
    QPixmap pixmap(3, 3);
    pixmap.fill(Qt::green);
    QVERIFY(element()->setChildProperties(u"icon"_s, pixmap, QString()));
    QCOMPARE(first.icon().size(), QSize(3, 3));
    QVERIFY(!push.icon().isNull());
    QVERIFY(last.icon().isNull());
}

void TestZEFUIElementChildren::nothingAfterForgettingTheWidget()
{
    ZEFDictionaryList list;
    element()->setClosing(false);
    element()->hideChild(u"okButton"_s);
    element()->showChild(u"okButton"_s, u"key"_s, &list);
    element()->enableChildIf(u"okButton"_s, u"key"_s, &list);
    element()->showChildIf(u"okButton"_s, u"key"_s, &list);
    QVERIFY(!element()->setChildProperty(u"okButton"_s, u"text"_s, u"x"_s));
    QVERIFY(!element()->childProperty(u"okButton"_s, u"text"_s).isValid());
    QVERIFY(!element()->setChildBackground(u"okButton"_s, QPixmap(2, 2), false));
    QVERIFY(!element()->setChildProperties(u"icon"_s, QPixmap(2, 2), QString()));
    QVERIFY(!child(u"okButton"_s)->isHidden());
}

void TestZEFUIElementChildren::nothingIsWrittenToTheLogs()
{
    TestLog::takeAll();
    unknownNamesDoNothing();
    readsAndWritesProperties();
    showsAndHides();
    QCOMPARE(TestLog::takeAll(), QStringList());
}

ZEF_TEST_MAIN(TestZEFUIElementChildren)
#include "test_zefuielement_children.moc"
