#include "ElementTest.h"

#include <element/ZEFUILoader.h>

class TestZEFUILoader : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void writesBothPathLinesAtEveryConstruction();
    void neverLoadsPlugins();
    void leavesStandardClassesToQt();
    void leavesUnknownClassesToQt_data();
    void leavesUnknownClassesToQt();
};

void TestZEFUILoader::writesBothPathLinesAtEveryConstruction()
{
    const QString libraries = u"log: LIBRARY PATHS: "_s + QCoreApplication::libraryPaths().join(u'\n');
    const ZEFUILoader first(nullptr);
    QCOMPARE(TestLog::takeAll(), QStringList({libraries, u"log: PLUGIN PATHS: "_s}));
    const ZEFUILoader second(nullptr);
    QCOMPARE(TestLog::takeAll(), QStringList({libraries, u"log: PLUGIN PATHS: "_s}));
}

void TestZEFUILoader::neverLoadsPlugins()
{
    const ZEFUILoader loader(nullptr);
    QCOMPARE(loader.pluginPaths(), QStringList());
}

void TestZEFUILoader::leavesStandardClassesToQt()
{
    ZEFUILoader loader(nullptr);
    TestLog::takeAll();
    QWidget parent;
    QWidget* button = loader.createWidget(u"QPushButton"_s, &parent, u"ok"_s);
    QVERIFY(button);
    QCOMPARE(button->metaObject()->className(), "QPushButton");
    QCOMPARE(button->objectName(), u"ok"_s);
    QCOMPARE(button->parentWidget(), &parent);
    QCOMPARE(TestLog::takeAll(), QStringList());
}

void TestZEFUILoader::leavesUnknownClassesToQt_data()
{
    QTest::addColumn<QString>("className");
    QTest::newRow("no class") << u"ZEFNoSuchWidget"_s;
    QTest::newRow("other case") << u"zeftogglebutton"_s;
    QTest::newRow("blank before") << u" ZEFToggleButton"_s;
    QTest::newRow("abstract painted button") << u"ZEFStdButton"_s;
    QTest::newRow("base style-sheet button") << u"ZEFStdSSButton"_s;
    QTest::newRow("base style-sheet check box") << u"ZEFStdSSCheckbox"_s;
    QTest::newRow("calendar") << u"ZEFCalendarWidget"_s;
}

void TestZEFUILoader::leavesUnknownClassesToQt()
{
    QFETCH(QString, className);
    ZEFUILoader loader(nullptr);
    TestLog::takeAll();
    const std::unique_ptr<QWidget> widget(loader.createWidget(className, nullptr, u"stranger"_s));
    QVERIFY(!widget || qstrcmp(widget->metaObject()->className(), "QWidget") == 0);
    QCOMPARE(TestLog::take(u"log: "_s), QStringList());
    TestLog::takeAll(); // Qt's own words about it
}

ZEF_TEST_MAIN(TestZEFUILoader)
#include "test_zefuiloader.moc"
