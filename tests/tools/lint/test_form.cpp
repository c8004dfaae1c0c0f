#include "ZEFTest.h"
#include "tools/lint/Form.h"

#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

class TestForm : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void widgetsAndProperties();
    void partsOfValues();
};

void TestForm::widgetsAndProperties()
{
    const QByteArray text = R"(<?xml version="1.0"?>
<ui version="4.0">
 <class> Login </class>
 <widget class="QDialog" name="Login">
  <property name="geometry"><rect><x>1</x></rect></property>
  <property name="windowTitle">
   <string comment="title">Log in &amp; out</string>
  </property>
  <layout class="QVBoxLayout" name="layout">
   <property name="spacing"><number>3</number></property>
   <item>
    <widget class="QComboBox" name="combo">
     <property name="editable"><bool>true</bool></property>
     <item><property name="text"><string>One</string></property></item>
     <item><property name="text"><string notr="true">Two</string></property></item>
    </widget>
   </item>
   <item><spacer name="spacer"><property name="note"><string>Spacer</string></property></spacer></item>
  </layout>
  <widget class="Fancy" name="fancy">
   <property name="lines"><stringlist notr="true"><string notr="false">L1</string><string>L2</string></stringlist></property>
   <property name="more"><stringlist comment="list"><string notr="true" comment="item">M</string></stringlist></property>
   <property name="format"><enum>Qt::PlainText</enum></property>
  </widget>
  <action name="action"><property name="text"><string>Act</string></property></action>
 </widget>
 <customwidgets>
  <customwidget><class>Fancy</class><extends>QFrame</extends></customwidget>
  <customwidget><class>Plain</class></customwidget>
 </customwidgets>
 <resources><include location="x.qrc"/></resources>
</ui>
)";
    QString error;
    const auto form = parseForm(u"login.ui"_s, text, &error);
    QVERIFY2(form, qPrintable(error));
    QCOMPARE(form->className, u"Login"_s);
    QCOMPARE(form->promotedClasses, (QHash<QString, QString>{{u"Fancy"_s, u"QFrame"_s}}));

    QStringList widgets;
    for (const FormWidget& widget : form->widgets) {
        QStringList properties;
        for (const FormProperty& property : widget.properties)
            properties.append(property.name + (property.isString ? u"=\"" : u"=") + property.value.text);
        widgets.append(QString::number(widget.line) + u' ' + widget.className + u' ' + widget.name + u' '
                       + QString::number(widget.parent) + u": " + properties.join(u','));
    }
    QCOMPARE(widgets,
             QStringList({u"4 QDialog Login -1: geometry=,windowTitle=\"Log in & out"_s,
                          u"12 QComboBox combo 0: editable=true"_s,
                          u"20 Fancy fancy 0: lines=,more=,format=Qt::PlainText"_s}));
    QCOMPARE(form->widgets.at(0).properties.at(1).value.comment, u"title"_s);
    QCOMPARE(form->widgets.at(0).properties.at(1).value.line, 7);

    QStringList others;
    for (const FormText& other : form->otherTexts)
        others.append(QString::number(other.line) + u' ' + other.text
                      + (other.translatable ? u"" : u" fixed"));
    QCOMPARE(others,
             QStringList({u"14 One"_s, u"15 Two fixed"_s, u"18 Spacer"_s, u"21 L1 fixed"_s, u"21 L2 fixed"_s,
                          u"22 M"_s, u"25 Act"_s}));
    // As the form loader has it: the strings of a list share what the list says.
    QCOMPARE(form->otherTexts.at(5).comment, u"list"_s);
    QCOMPARE(form->otherTexts.at(6).comment, QString());

    QVERIFY(form->faults.isEmpty());
}

void TestForm::partsOfValues()
{
    const QByteArray text = R"(<ui version="4.0"><widget class="QFrame" name="f">
  <property name="maximumSize"><size><width>16777215</width><height> 24 </height></size></property>
  <property name="sizePolicy"><sizepolicy hsizetype="Fixed" vsizetype="Preferred"><horstretch>3</horstretch></sizepolicy></property>
  <property name="font"><font><family>Sans<!-- --></family><bold>true</bold></font></property>
  <layout class="QVBoxLayout" name="l"><property name="margins"><rect><x>5</x></rect></property></layout>
  <property name="enabled"><bool>true</bool></property>
</widget></ui>)";
    QString error;
    const auto form = parseForm(u"f.ui"_s, text, &error);
    QVERIFY2(form, qPrintable(error));
    const auto parts = [&](QLatin1String property) {
        return form->widgets.constFirst().property(property)->parts;
    };
    using Parts = QHash<QString, QString>;
    QCOMPARE(parts("maximumSize"_L1), (Parts{{u"width"_s, u"16777215"_s}, {u"height"_s, u"24"_s}}));
    QCOMPARE(
        parts("sizePolicy"_L1),
        (Parts{{u"hsizetype"_s, u"Fixed"_s}, {u"vsizetype"_s, u"Preferred"_s}, {u"horstretch"_s, u"3"_s}}));
    QCOMPARE(parts("font"_L1), (Parts{{u"family"_s, u"Sans"_s}, {u"bold"_s, u"true"_s}}));
    QCOMPARE(parts("enabled"_L1), Parts());
}

ZEF_TEST_MAIN(TestForm)
#include "test_form.moc"
