#include "../ToolRun.h"

#include "ZEFTest.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace {

const QByteArray form = R"(<?xml version="1.0"?>
<ui version="4.0">
 <class>Panel</class>
 <widget class="QFrame" name="panel"/>
</ui>
)";

QByteArray formOfSize(const QByteArray& width, const QByteArray& height)
{
    const QByteArray size = "<size><width>" + width + "</width><height>" + height + "</height></size>";
    const QByteArray properties = "><property name=\"minimumSize\">" + size
        + "</property><property name=\"maximumSize\">" + size + "</property></widget>";
    return QByteArray(form).replace("/>", properties);
}

QByteArray formWithText(const QByteArray& text)
{
    const QByteArray label = R"(><layout class="QVBoxLayout" name="layout">
   <item><widget class="QLabel" name="label"><property name="text"><string>)"
        + text + "</string></property></widget></item></layout></widget>";
    return QByteArray(form).replace("/>", label);
}

void write(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), contents.size());
}

ToolRun preview(const QStringList& arguments, const QString& folder)
{
    return runTool(QStringLiteral(ZEFUI_PREVIEW), arguments, folder);
}

} // namespace

class TestZEFUIPreview : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void aScreenshotNeedsNoDisplay();
    void screenshotsOfOneFormAreAlike();
    void theStyleIsTheOneAskedFor();
    void coloursAreTheOnesAskedFor_data();
    void coloursAreTheOnesAskedFor();
    void theScaleIsTheOneAskedFor_data();
    void theScaleIsTheOneAskedFor();
    void theFontIsAsLargeAsAskedFor();
    void theDirectionIsThatOfTheLocale_data();
    void theDirectionIsThatOfTheLocale();
    void pseudoTranslationMakesTextsLonger();
    void severalLocalesAreInOnePicture();
    void aComplaintOfSeveralLocalesIsMadeOnce();
    void qtsOwnOptionsAreTaken_data();
    void qtsOwnOptionsAreTaken();
    void whatCannotBeRunIsSaidInOneLine_data();
    void whatCannotBeRunIsSaidInOneLine();
    void aFailureLeavesTheOldPicture();
    void aFormWithoutALayoutHasItsSizeInDesigner();
    void aFormOfNoSizeHasNoPicture();
    void onlyFilesAreReplaced();
    void noDisplayIsSaidInOneLine();
    void helpAndVersion();
};

void TestZEFUIPreview::aScreenshotNeedsNoDisplay()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const QByteArray display = qgetenv("DISPLAY");
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("DISPLAY");
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), form);
    QVERIFY(QDir(folder.path()).mkdir(u"css"_s));
    write(folder.filePath(u"css/panel.css"_s), "background: #2468ac");
    const ToolRun run = preview(
        {u"--css"_s, u"css"_s, u"--size"_s, u"211x97"_s, u"--screenshot"_s, u"panel.png"_s, u"panel.ui"_s},
        folder.path());
    qputenv("QT_QPA_PLATFORM", platform);
    qputenv("DISPLAY", display);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 0);
    const QImage picture(folder.filePath(u"panel.png"_s));
    QCOMPARE(picture.size(), QSize(211, 97));
    QCOMPARE(picture.pixelColor(0, 0), QColor(0x24, 0x68, 0xac));
    QCOMPARE(picture.pixelColor(210, 96), QColor(0x24, 0x68, 0xac));
}

void TestZEFUIPreview::screenshotsOfOneFormAreAlike()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s),
          QByteArray(form).replace("<widget class=\"QFrame\" name=\"panel\"/>",
                                   R"(<widget class="QWidget" name="panel">
  <layout class="QVBoxLayout" name="layout">
   <item><widget class="QLineEdit" name="edit"/></item>
   <item><widget class="ZEFEllipsisLabel" name="label"><property name="text"><string>A long text that is cut</string></property></widget></item>
  </layout></widget>)"));
    for (const QString& name : {u"a.png"_s, u"b.png"_s})
        QCOMPARE(
            preview({u"--screenshot"_s, name, u"--size"_s, u"80x80"_s, u"panel.ui"_s}, folder.path()).status,
            0);
    QCOMPARE(QImage(folder.filePath(u"a.png"_s)), QImage(folder.filePath(u"b.png"_s)));
}

void TestZEFUIPreview::theStyleIsTheOneAskedFor()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), QByteArray(form).replace("QFrame", "QPushButton"));
    for (const QString& style : {u"Fusion"_s, u"Windows"_s}) {
        QCOMPARE(
            preview({u"--style"_s, style, u"--screenshot"_s, style, u"--size"_s, u"80x80"_s, u"panel.ui"_s},
                    folder.path())
                .status,
            0);
    }
    const QImage fusion(folder.filePath(u"Fusion"_s));
    const QImage windows(folder.filePath(u"Windows"_s));
    QVERIFY(!fusion.isNull() && !windows.isNull());
    QVERIFY(fusion != windows);
}

void TestZEFUIPreview::coloursAreTheOnesAskedFor_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QColor>("color");
    QTest::newRow("dark") << u"--dark"_s << QColor(0x20, 0x20, 0x20);
    QTest::newRow("high contrast") << u"--high-contrast"_s << QColor(Qt::black);
}

void TestZEFUIPreview::coloursAreTheOnesAskedFor()
{
    QFETCH(const QString, option);
    QFETCH(const QColor, color);
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), form);
    const ToolRun run = preview(
        {option, u"--size"_s, u"80x80"_s, u"--screenshot"_s, u"panel.png"_s, u"panel.ui"_s}, folder.path());
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(QImage(folder.filePath(u"panel.png"_s)).pixelColor(40, 40), color);
}

void TestZEFUIPreview::theScaleIsTheOneAskedFor_data()
{
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QSize>("size");
    QTest::newRow("half") << u"0.5"_s << QSize(80, 40);
    QTest::newRow("one and a half") << u"1.5"_s << QSize(240, 120);
    QTest::newRow("three") << u"3"_s << QSize(480, 240);
}

void TestZEFUIPreview::theScaleIsTheOneAskedFor()
{
    QFETCH(const QString, scale);
    QFETCH(const QSize, size);
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), formOfSize("160", "80"));
    const ToolRun run =
        preview({u"--scale"_s, scale, u"--screenshot"_s, u"panel.png"_s, u"panel.ui"_s}, folder.path());
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(QImage(folder.filePath(u"panel.png"_s)).size(), size);
}

void TestZEFUIPreview::theFontIsAsLargeAsAskedFor()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"text.ui"_s), formWithText("Some text"));
    const auto sizeAt = [&](const QString& points) {
        preview({u"--font-size"_s, points, u"--screenshot"_s, u"text.png"_s, u"text.ui"_s}, folder.path());
        return QImage(folder.filePath(u"text.png"_s)).size();
    };
    const QSize small = sizeAt(u"8"_s);
    const QSize large = sizeAt(u"24"_s);
    QVERIFY(large.width() > 2 * small.width());
    // Around the text there is a margin.
    QVERIFY(large.height() > small.height() + 15);
}

void TestZEFUIPreview::theDirectionIsThatOfTheLocale_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("startsAtTheRight");
    QTest::newRow("English") << QStringList{u"--locale"_s, u"en"_s} << false;
    QTest::newRow("Hebrew") << QStringList{u"--locale"_s, u"he"_s} << true;
    QTest::newRow("Arabic of a country") << QStringList{u"--locale"_s, u"ar_EG"_s} << true;
    QTest::newRow("English, reversed") << QStringList{u"--reverse"_s} << true;
    QTest::newRow("as Qt spells it") << QStringList{u"-reverse"_s} << true;
    QTest::newRow("Hebrew, reversed") << QStringList{u"--locale"_s, u"he"_s, u"--reverse"_s} << false;
    QTest::newRow("no locale at all") << QStringList{u"--locale"_s, u"xx"_s} << false;
}

void TestZEFUIPreview::theDirectionIsThatOfTheLocale()
{
    QFETCH(const QStringList, options);
    QFETCH(const bool, startsAtTheRight);
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s),
          QByteArray(form).replace("/>", R"(><layout class="QHBoxLayout" name="row">
   <item><widget class="QFrame" name="first"><property name="styleSheet"><string notr="true">background: #ff0000</string></property></widget></item>
   <item><widget class="QFrame" name="second"/></item></layout></widget>)"));
    const ToolRun run = preview(
        options + QStringList{u"--size"_s, u"200x80"_s, u"--screenshot"_s, u"panel.png"_s, u"panel.ui"_s},
        folder.path());
    QCOMPARE(run.errors, QByteArray());
    const QImage picture(folder.filePath(u"panel.png"_s));
    QCOMPARE(picture.pixelColor(150, 40) == Qt::red, startsAtTheRight);
    QCOMPARE(picture.pixelColor(50, 40) == Qt::red, !startsAtTheRight);
}

void TestZEFUIPreview::pseudoTranslationMakesTextsLonger()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"text.ui"_s), formWithText("Some text"));
    write(folder.filePath(u"fixed.ui"_s),
          formWithText("Some text").replace("<string>", "<string notr=\"true\">"));
    const auto widthOf = [&](const QString& name, const QStringList& options) {
        preview(options + QStringList{u"--screenshot"_s, u"text.png"_s, name}, folder.path());
        return QImage(folder.filePath(u"text.png"_s)).width();
    };
    const int width = widthOf(u"text.ui"_s, {});
    QVERIFY(widthOf(u"text.ui"_s, {u"--pseudo"_s}) > 1.5 * width);
    QCOMPARE(widthOf(u"fixed.ui"_s, {u"--pseudo"_s}), width);
    // Instead of a translation
    QVERIFY(QDir(folder.path()).mkdir(u"i18n"_s));
    write(
        folder.filePath(u"i18n/zefmain_en.ts"_s),
        R"(<?xml version="1.0"?><!DOCTYPE TS><TS version="2.1" language="en"><context><name>Panel</name><message>
<source>Some text</source><translation>T</translation></message></context></TS>)");
    const QStringList translated{u"--translations"_s, u"i18n"_s};
    QVERIFY(widthOf(u"text.ui"_s, translated) < width);
    QVERIFY(widthOf(u"text.ui"_s, translated + QStringList{u"--pseudo"_s}) > 1.5 * width);
}

void TestZEFUIPreview::severalLocalesAreInOnePicture()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), formOfSize("160", "80"));
    QVERIFY(QDir(folder.path()).mkdir(u"css"_s));
    write(folder.filePath(u"css/panel.css"_s), "background: #2468ac");
    QStringList options{u"--css"_s, u"css"_s, u"--screenshot"_s, u"panel.png"_s, u"panel.ui"_s};
    for (const QString& locale : {u"en"_s, u"de"_s, u"he"_s})
        options += {u"--locale"_s, locale};
    const ToolRun run = preview(options, folder.path());
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
    const QImage picture = QImage(folder.filePath(u"panel.png"_s)).convertToFormat(QImage::Format_RGB32);
    int area = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            area += picture.pixelColor(x, y) == QColor(0x24, 0x68, 0xac) ? 1 : 0;
    }
    QCOMPARE(area, 3 * 160 * 80);
    // Two in the first row, one in the second
    QVERIFY(picture.width() > 2 * 160 && picture.width() < 3 * 160);
    QVERIFY(picture.height() > 2 * 80);

    const ToolRun shown =
        preview({u"--locale"_s, u"en"_s, u"--locale"_s, u"de"_s, u"panel.ui"_s}, folder.path());
    QCOMPARE(shown.errors,
             QByteArray("zefui-preview: several locales are shown in one picture: add --screenshot\n"));
    QCOMPARE(shown.status, 2);
}

void TestZEFUIPreview::aComplaintOfSeveralLocalesIsMadeOnce()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"text.ui"_s),
          formWithText("Some text")
              .replace("</layout>", "<item><widget class=\"Gauge\" name=\"g\"/></item></layout>"));
    const ToolRun run =
        preview({u"--locale"_s, u"en"_s, u"--locale"_s, u"de"_s, u"--screenshot"_s, u"p.png"_s, u"text.ui"_s},
                folder.path());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.errors.count("the class Gauge"), 1);
}

void TestZEFUIPreview::qtsOwnOptionsAreTaken_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QColor>("color");
    QTest::newRow("a platform, one dash") << QStringList{u"-platform"_s, u"offscreen"_s} << QColor();
    QTest::newRow("a platform, two dashes") << QStringList{u"--platform"_s, u"offscreen"_s} << QColor();
    QTest::newRow("a title") << QStringList{u"-qwindowtitle"_s, u"A title"_s} << QColor();
    QTest::newRow("a place") << QStringList{u"-qwindowgeometry"_s, u"100x100+0+0"_s} << QColor();
    QTest::newRow("a style sheet") << QStringList{u"-stylesheet"_s, u"all.qss"_s} << QColor(0x12, 0x34, 0x56);
}

void TestZEFUIPreview::qtsOwnOptionsAreTaken()
{
    QFETCH(const QStringList, options);
    QFETCH(const QColor, color);
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), form);
    write(folder.filePath(u"all.qss"_s), "QFrame { background: #123456 }");
    const ToolRun run = preview(
        options + QStringList{u"--size"_s, u"80x80"_s, u"--screenshot"_s, u"panel.png"_s, u"panel.ui"_s},
        folder.path());
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
    const QImage picture(folder.filePath(u"panel.png"_s));
    QCOMPARE(picture.size(), QSize(80, 80));
    if (color.isValid())
        QCOMPARE(picture.pixelColor(40, 40), color);
}

void TestZEFUIPreview::whatCannotBeRunIsSaidInOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");
    const auto row = [](const char* name, const QStringList& arguments, const QByteArray& error) {
        QTest::newRow(name) << QStringList({u"--screenshot"_s, u"out.png"_s}) + arguments << error;
    };
    row("no form", {}, "one form must be given; zefui-preview --help says more");
    row("two forms", {u"panel.ui"_s, u"panel.ui"_s},
        "one form must be given; zefui-preview --help says more");
    row("unknown option", {u"--frob"_s, u"panel.ui"_s}, "Unknown option 'frob'.");
    row("no such form", {u"absent.ui"_s}, "absent.ui: there is no such file");
    row("a folder", {u"css"_s}, "css: is a folder, not a file");
    row("a huge file", {u"huge.ui"_s}, "huge.ui: is larger than 32 MiB");
    row("broken XML", {u"broken.ui"_s}, "broken.ui:2: ");
    row("garbage", {u"garbage.ui"_s}, "garbage.ui:1: ");
    row("a class that does not exist", {u"noclass.ui"_s},
        "noclass.ui:2: the loader cannot create the class Gauge of \"a\": the form does not load. ");
    row("deep widgets", {u"deep.ui"_s},
        "deep.ui:5: more than 300 elements are nested here, which is too deep");
    row("an endless picture", {u"endless.ui"_s},
        "no picture can be made of a form of 16385x10 pixels; choose another size by --size");
    row("a layout that does not exist", {u"nolayout.ui"_s},
        "nolayout.ui:5: the loader cannot create the layout class Flow of \"f\"");
    row("a circle of promotions", {u"circle.ui"_s},
        "circle.ui:5: the loader cannot create the class Hen of \"hen\", which is promoted in a circle");
    row("no size", {u"--size"_s, u"big"_s, u"panel.ui"_s},
        "the size must be <width>x<height> in pixels, for instance 640x480, not big");
    row("no width", {u"--size"_s, u"0x10"_s, u"panel.ui"_s},
        "the size must be <width>x<height> in pixels, for instance 640x480, not 0x10");
    row("endless size", {u"--size"_s, u"99999x10"_s, u"panel.ui"_s},
        "the size must be <width>x<height> in pixels, for instance 640x480, not 99999x10");
    row("two sets of colours", {u"--dark"_s, u"--high-contrast"_s, u"panel.ui"_s},
        "--dark and --high-contrast exclude each other");
    row("no scale", {u"--scale"_s, u"big"_s, u"panel.ui"_s},
        "--scale must be a number from 0.5 to 8, not big");
    row("a negative scale", {u"--scale=-1"_s, u"panel.ui"_s},
        "--scale must be a number from 0.5 to 8, not -1");
    row("an endless scale", {u"--scale"_s, u"9"_s, u"panel.ui"_s},
        "--scale must be a number from 0.5 to 8, not 9");
    row("no number", {u"--scale"_s, u"nan"_s, u"panel.ui"_s},
        "--scale must be a number from 0.5 to 8, not nan");
    row("no font", {u"--font-size"_s, u"3"_s, u"panel.ui"_s},
        "--font-size must be a number from 4 to 96, not 3");
    row("a scale that is too large for the form", {u"--scale"_s, u"8"_s, u"wide.ui"_s},
        "no picture can be made of a form of 24000x80 pixels; choose another size by --size");
    row("unknown style", {u"--style"_s, u"Frob"_s, u"panel.ui"_s}, "there is no style Frob; there are ");
    row("no style sheets", {u"--css"_s, u"absent"_s, u"panel.ui"_s}, "absent: there is no such folder");
    row("a file of style sheets", {u"--css"_s, u"panel.ui"_s, u"panel.ui"_s},
        "panel.ui: is not a folder that can be read");
    row("no translations", {u"--translations"_s, u"absent"_s, u"panel.ui"_s},
        "absent: there is no such folder");
    row("a broken translation", {u"--translations"_s, u"i18n"_s, u"panel.ui"_s},
        "i18n/zefmain_de.ts: lrelease cannot compile it: ");
    row("no values", {u"--values"_s, u"absent.json"_s, u"panel.ui"_s}, "absent.json: there is no such file");
    row("broken values", {u"--values"_s, u"broken.json"_s, u"panel.ui"_s}, "broken.json:3: ");
    row("no place for the picture",
        {u"--screenshot"_s, u"absent/out.png"_s, u"--size"_s, u"9x9"_s, u"panel.ui"_s},
        "absent/out.png: No such file or directory");
}

void TestZEFUIPreview::whatCannotBeRunIsSaidInOneLine()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, error);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"css"_s));
    QVERIFY(QDir(folder.path()).mkdir(u"i18n"_s));
    write(folder.filePath(u"panel.ui"_s), form);
    write(folder.filePath(u"broken.ui"_s), "<ui version=\"4.0\">\n<widget></ui>");
    write(folder.filePath(u"garbage.ui"_s),
          QByteArray("\x7f"
                     "ELF\0\0\xff\xfe",
                     8));
    write(folder.filePath(u"noclass.ui"_s),
          "<ui version=\"4.0\">\n<widget class=\"Gauge\" name=\"a\"/>\n</ui>");
    const QByteArray nested = ">\n" + QByteArray("<widget class=\"QFrame\">").repeated(100000)
        + QByteArray("</widget>").repeated(100001);
    write(folder.filePath(u"deep.ui"_s), QByteArray(form).replace("/>", nested));
    // A widget that is only left out says nothing when the whole form is not shown.
    write(folder.filePath(u"nolayout.ui"_s),
          QByteArray(form).replace(
              "/>", ">\n<layout class=\"Flow\" name=\"f\"/>\n<widget class=\"Gauge\"/></widget>"));
    write(folder.filePath(u"circle.ui"_s),
          QByteArray(form).replace(
              "/>",
              ">\n<widget class=\"Hen\" name=\"hen\"/></widget><customwidgets><customwidget>"
              "<class>Hen</class><extends>Hen</extends></customwidget></customwidgets>"));
    write(folder.filePath(u"endless.ui"_s), formOfSize("16385", "10"));
    write(folder.filePath(u"wide.ui"_s), formOfSize("3000", "10"));
    write(folder.filePath(u"broken.json"_s), "{\n\"a\":\n]}");
    write(folder.filePath(u"i18n/zefmain_de.ts"_s), "<TS");
    QFile huge(folder.filePath(u"huge.ui"_s));
    QVERIFY(huge.open(QIODevice::WriteOnly) && huge.resize(100 * 1024 * 1024));

    const ToolRun run = preview(arguments, folder.path());
    const QByteArray expected = "zefui-preview: " + error;
    QCOMPARE(run.errors.first(qMin(run.errors.size(), expected.size())), expected);
    QCOMPARE(run.errors.count('\n'), 1);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 2);
    QVERIFY(!QFile::exists(folder.filePath(u"out.png"_s)));
}

void TestZEFUIPreview::aFailureLeavesTheOldPicture()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"out.png"_s), "old");
    QCOMPARE(preview({u"--screenshot"_s, u"out.png"_s, u"absent.ui"_s}, folder.path()).status, 2);
    QFile file(folder.filePath(u"out.png"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("old"));
}

//! Its dialog would have no size at all in a service.
void TestZEFUIPreview::aFormWithoutALayoutHasItsSizeInDesigner()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s),
          QByteArray(form)
              .replace("QFrame", "QWidget")
              .replace("/>",
                       "><property name=\"geometry\"><rect><x>7</x><y>9</y><width>211</width>"
                       "<height>97</height></rect></property></widget>"));
    const ToolRun run = preview({u"--screenshot"_s, u"panel.png"_s, u"panel.ui"_s}, folder.path());
    QCOMPARE(run.errors,
             QByteArray("zefui-preview: panel.ui:4: the form asks for no size, so that a dialog of "
                        "ZEFUIDialog::create() shows nothing of it. Give it a layout or a minimum size; here "
                        "it has the size that it has in Designer.\n"));
    QCOMPARE(run.status, 0);
    QCOMPARE(QImage(folder.filePath(u"panel.png"_s)).size(), QSize(211, 97));
}

void TestZEFUIPreview::aFormOfNoSizeHasNoPicture()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), formOfSize("0", "0"));
    const ToolRun run = preview({u"--screenshot"_s, u"out.png"_s, u"panel.ui"_s}, folder.path());
    const QByteArray error = "no picture can be made of a form of 0x0 pixels; choose another size by --size";
    QCOMPARE(run.errors.split('\n').at(1), "zefui-preview: " + error);
    QCOMPARE(run.status, 2);
    QVERIFY(!QFile::exists(folder.filePath(u"out.png"_s)));
}

//! A picture for /dev/null must not take the place of the device. A pipe stands for it here.
void TestZEFUIPreview::onlyFilesAreReplaced()
{
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), form);
    if (QProcess::execute(u"mkfifo"_s, {folder.filePath(u"pipe"_s)}) != 0)
        QSKIP("This system has no pipes among its files");
    const ToolRun run =
        preview({u"--screenshot"_s, u"pipe"_s, u"--size"_s, u"80x80"_s, u"panel.ui"_s}, folder.path());
    QCOMPARE(run.errors, QByteArray("zefui-preview: pipe: is not an ordinary file\n"));
    QCOMPARE(run.status, 2);
    QVERIFY(!QFileInfo(folder.filePath(u"pipe"_s)).isFile());
}

void TestZEFUIPreview::noDisplayIsSaidInOneLine()
{
#ifdef Q_OS_WIN
    QSKIP("There is a display, always");
#endif
    const QTemporaryDir folder;
    write(folder.filePath(u"panel.ui"_s), form);
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", "absent");
    const ToolRun run = preview({u"panel.ui"_s}, folder.path());
    qputenv("QT_QPA_PLATFORM", platform);
    const ToolRun chosen = preview({u"-platform"_s, u"absent"_s, u"panel.ui"_s}, folder.path());
    for (const ToolRun& failed : {run, chosen}) {
        QVERIFY2(failed.errors.startsWith("zefui-preview: This application failed to start because no Qt "
                                          "platform plugin could be initialized."),
                 failed.errors.constData());
        QCOMPARE(failed.errors.count('\n'), 1);
        QCOMPARE(failed.status, 2);
    }
}

void TestZEFUIPreview::helpAndVersion()
{
    const ToolRun help = preview({u"--help"_s}, QString());
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.contains("--screenshot <file.png>"));
    // Qt's own have their own manual.
    QVERIFY(!help.output.contains("--platform <"));
    QCOMPARE(help.errors, QByteArray());
    const ToolRun version = preview({u"--version"_s}, QString());
    QCOMPARE(version.status, 0);
    QCOMPARE(version.output.first(14), QByteArray("zefui-preview "));
}

ZEF_TEST_MAIN(TestZEFUIPreview)
#include "test_zefuipreview.moc"
