#include "ZEFTest.h"
#include "tools/preview/FormPreview.h"

#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QByteArray translation = R"(<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context><name>Login</name><message><source>Good morning, %{user}</source>
<translation>Guten Morgen, %{user}</translation></message></context>
</TS>
)";

void write(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), contents.size());
}

QByteArray form(const QByteArray& text)
{
    return R"(<?xml version="1.0"?>
<ui version="4.0">
 <class>Login</class>
 <widget class="QWidget" name="Login">
  <layout class="QVBoxLayout" name="layout">
   <item><widget class="QLabel" name="greeting"><property name="text"><string>)"
        + text + R"(</string></property></widget></item>
   <item><widget class="ZEFToggleButton" name="toggle"/></item>
   <item><widget class="QLineEdit" name="nameEdit"/></item>
  </layout>
 </widget>
</ui>
)";
}

} // namespace

class TestFormPreview : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void aFormIsShownAsAServiceWould();
    void theSizeIsTheOneAskedFor();
    void aChangedFileIsShown_data();
    void aChangedFileIsShown();
    void aBrokenFileLeavesTheForm();
    void aReplacedFileIsShown();
    void aFolderThatComesBackIsRead_data();
    void aFolderThatComesBackIsRead();
    void anotherFileChangesNothing();
    void closingTheFormIsTold();
    void aClassOfNoOneIsComplainedOf();
    void aFormOfADialogIsShown_data();
    void aFormOfADialogIsShown();

private:
    void prepare() override;
    void tidyUp() override;
    void writeFiles(const QByteArray& styleSheet);
    QString path(const QString& name) const { return m_folder->filePath(name); }
    static QString property(const FormPreview& preview, const QString& widget, const QString& name)
    {
        return preview.dialog()->element()->childProperty(widget, name).toString();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    PreviewOptions m_options;
    QString m_error;
};

void TestFormPreview::prepare()
{
    // What the library tries in vain and tells about each form.
    TestLog::allow(QRegularExpression(u"warning: QObject::connect: .*"_s));
    TestLog::allow(QRegularExpression(u"debug: (set property on|ZEFUIDialog|formpath in) ?.*"_s));
    TestLog::allow(u"warning: This plugin does not support propagateSizeHints()"_s);
    m_folder = std::make_unique<QTemporaryDir>();
    writeFiles("color: #123456");
    m_options = {path(u"login.ui"_s),    u"de"_s, path(u"looks/css"_s), path(u"i18n"_s),
                 path(u"values.json"_s), QSize()};
}

void TestFormPreview::writeFiles(const QByteArray& styleSheet)
{
    QVERIFY(QDir().mkpath(path(u"looks/css"_s)));
    QVERIFY(QDir().mkpath(path(u"i18n"_s)));
    write(path(u"login.ui"_s), form("Good morning, %{user}"));
    write(path(u"looks/css/greeting.css"_s), styleSheet);
    write(path(u"i18n/zefmain_de.ts"_s), translation);
    write(
        path(u"values.json"_s),
        R"({"dictionaries": [{"user": "Ada"}, {"user": "Bob"}], "properties": {"nameEdit_text": "%{user}"}})");
}

void TestFormPreview::tidyUp()
{
    m_folder.reset();
}

void TestFormPreview::aFormIsShownAsAServiceWould()
{
    FormPreview preview(m_options);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    QVERIFY(preview.dialog()->isVisible());
    QCOMPARE(preview.dialog()->element()->formPath(), u":/forms/login.ui"_s);
    QCOMPARE(property(preview, u"greeting"_s, u"text"_s), u"Guten Morgen, Ada"_s);
    QCOMPARE(property(preview, u"greeting"_s, u"styleSheet"_s), u"color: #123456"_s);
    // A client's value is no template.
    QCOMPARE(property(preview, u"nameEdit"_s, u"text"_s), u"%{user}"_s);
    QCOMPARE(preview.dialog()->minimumSize(), preview.dialog()->maximumSize());
}

void TestFormPreview::theSizeIsTheOneAskedFor()
{
    m_options.size = QSize(517, 333);
    FormPreview preview(m_options);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    QCOMPARE(preview.dialog()->size(), QSize(517, 333));
}

void TestFormPreview::aChangedFileIsShown_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("propertyName");
    QTest::addColumn<QString>("value");
    QTest::newRow("form") << u"login.ui"_s << form("Hello") << u"text"_s << u"Hello"_s;
    QTest::newRow("style sheet") << u"looks/css/greeting.css"_s << QByteArray("color: red") << u"styleSheet"_s
                                 << u"color: red"_s;
    QTest::newRow("translation") << u"i18n/zefmain_de.ts"_s
                                 << QByteArray(translation).replace("Guten Morgen", "Moin") << u"text"_s
                                 << u"Moin, Ada"_s;
    QTest::newRow("values") << u"values.json"_s << QByteArray(R"({"dictionaries": [{"user": "Cy"}]})")
                            << u"text"_s << u"Guten Morgen, Cy"_s;
}

void TestFormPreview::aChangedFileIsShown()
{
    QFETCH(const QString, file);
    QFETCH(const QByteArray, contents);
    QFETCH(const QString, propertyName);
    QFETCH(const QString, value);
    FormPreview preview(m_options);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    preview.watch();
    write(path(file), contents);
    QTRY_COMPARE(property(preview, u"greeting"_s, propertyName), value);
    QVERIFY(preview.dialog()->isVisible());
}

void TestFormPreview::aBrokenFileLeavesTheForm()
{
    FormPreview preview(m_options);
    const QSignalSpy complaints(&preview, &FormPreview::complaint);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    preview.watch();
    write(path(u"login.ui"_s), "<ui version=\"4.0\">\n<widget");
    QTRY_COMPARE(complaints.size(), 1);
    QVERIFY(complaints.at(0).at(0).toString().startsWith(path(u"login.ui"_s) + u":2: "));
    QCOMPARE(property(preview, u"greeting"_s, u"text"_s), u"Guten Morgen, Ada"_s);
    write(path(u"login.ui"_s),
          form("Hello").replace("\"QWidget\" name=\"Login\"", "\"Gauge\" name=\"Login\""));
    QTRY_COMPARE(complaints.size(), 2);
    QVERIFY(complaints.at(1).at(0).toString().contains(u"the form does not load"));
    QCOMPARE(property(preview, u"greeting"_s, u"text"_s), u"Guten Morgen, Ada"_s);
    write(path(u"login.ui"_s), form("Hello again"));
    QTRY_COMPARE(property(preview, u"greeting"_s, u"text"_s), u"Hello again"_s);
    QCOMPARE(complaints.size(), 2);
}

//! As many editors save: the new file takes the place of the old one, more than once.
void TestFormPreview::aReplacedFileIsShown()
{
    FormPreview preview(m_options);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    preview.watch();
    for (const QByteArray text : {"First", "Second"}) {
        write(path(u"login.new"_s), form(text));
        QVERIFY(QFile::remove(path(u"login.ui"_s)));
        QVERIFY(QFile::rename(path(u"login.new"_s), path(u"login.ui"_s)));
        QTRY_COMPARE(property(preview, u"greeting"_s, u"text"_s), QString::fromLatin1(text));
    }
}

void TestFormPreview::aFolderThatComesBackIsRead_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("style sheets") << u"looks/css"_s;
    QTest::newRow("everything") << QString();
}

//! As when another state of the sources is checked out.
void TestFormPreview::aFolderThatComesBackIsRead()
{
    QFETCH(const QString, folder);
    FormPreview preview(m_options);
    const QSignalSpy complaints(&preview, &FormPreview::complaint);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    preview.watch();
    QVERIFY(QDir(path(folder)).removeRecursively());
    QTRY_COMPARE(complaints.size(), 1);
    QCOMPARE(property(preview, u"greeting"_s, u"styleSheet"_s), u"color: #123456"_s);
    if (folder.isEmpty()) {
        writeFiles("color: red");
    } else {
        QVERIFY(QDir().mkpath(path(folder)));
        write(path(u"looks/css/greeting.css"_s), "color: red");
    }
    QTRY_COMPARE(property(preview, u"greeting"_s, u"styleSheet"_s), u"color: red"_s);
}

//! What the user typed into the form stays.
void TestFormPreview::anotherFileChangesNothing()
{
    FormPreview preview(m_options);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    preview.watch();
    ZEFUIElement* const element = preview.dialog()->element();
    QVERIFY(element->setChildProperty(u"nameEdit"_s, u"text"_s, u"typed"_s));
    write(path(u"notes.txt"_s), "something else");
    write(path(u"login.ui"_s), form("Good morning, %{user}"));
    // Longer than the preview waits for an editor to finish
    QTest::qWait(500);
    QCOMPARE(property(preview, u"nameEdit"_s, u"text"_s), u"typed"_s);
    write(path(u"login.ui"_s), form("Hello"));
    QTRY_COMPARE(property(preview, u"greeting"_s, u"text"_s), u"Hello"_s);
    QCOMPARE(property(preview, u"nameEdit"_s, u"text"_s), u"%{user}"_s);
}

void TestFormPreview::closingTheFormIsTold()
{
    FormPreview preview(m_options);
    const QSignalSpy closed(&preview, &FormPreview::closed);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    preview.dialog()->close();
    QCOMPARE(closed.size(), 1);
    QTRY_VERIFY(!preview.dialog());
}

void TestFormPreview::aClassOfNoOneIsComplainedOf()
{
    TestLog::allow(
        QRegularExpression(u"warning: .*(QFormBuilder was unable to create|Empty widget item).*"_s));
    write(path(u"login.ui"_s), form("Hello").replace("ZEFToggleButton", "Gauge"));
    FormPreview preview(m_options);
    const QSignalSpy complaints(&preview, &FormPreview::complaint);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    QCOMPARE(complaints.size(), 1);
    QVERIFY(complaints.at(0).at(0).toString().startsWith(
        path(u"login.ui"_s)
        + u":7: the loader cannot create the class Gauge of \"toggle\": the widget is left out"));
}

void TestFormPreview::aFormOfADialogIsShown_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("dialog") << QByteArray("QDialog");
    QTest::newRow("main window") << QByteArray("QMainWindow");
}

// As Designer's templates have it, without a layout.
void TestFormPreview::aFormOfADialogIsShown()
{
    QFETCH(const QByteArray, className);
    write(path(u"login.ui"_s),
          "<ui version=\"4.0\"><class>Login</class><widget class=\"" + className
              + "\" name=\"Login\"><property name=\"geometry\"><rect><x>0</x><y>0</y><width>321</width>"
                "<height>123</height></rect></property><widget class=\"QPushButton\" name=\"ok\"/></widget>"
                "<connections><connection><sender>ok</sender><signal>clicked()</signal><receiver>Login</"
                "receiver>"
                "<slot>close()</slot></connection></connections></ui>");
    m_options.values.clear();
    FormPreview preview(m_options);
    const QSignalSpy closed(&preview, &FormPreview::closed);
    QVERIFY2(preview.load(&m_error), qPrintable(m_error));
    const auto* form = preview.dialog()->findChild<QWidget*>(u"Login"_s);
    QVERIFY(form->isVisible());
    QCOMPARE(form->window(), preview.dialog());
    if (className == "QDialog")
        QCOMPARE(form->size(), QSize(321, 123));
    TestLog::allow(u"debug: Could not find a method ok_clicked on delegate"_s);
    preview.dialog()->findChild<QPushButton*>(u"ok"_s)->click();
    QCOMPARE(closed.size(), 1);
}

ZEF_TEST_MAIN(TestFormPreview)
#include "test_formpreview.moc"
