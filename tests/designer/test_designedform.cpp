#include "element/ZEFUILoader.h"

#include <ElementTest.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFFormatEdit.h>
#include <ZEFToggleButton.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>

#include <memory>

//! The form that Designer saved, as the library sees it.
class TestDesignedForm : public ElementTest {
    Q_OBJECT

    static void compareClasses(QWidget* form)
    {
        const QList<std::pair<QString, QLatin1String>> expected = {
            {u"orderLink"_s, "ZEFCommandLinkButton"_L1}, {u"newsToggle"_s, "ZEFToggleButton"_L1},
            {u"keyEdit"_s, "ZEFFormatEdit"_L1},          {u"countCell"_s, "ZEFFormatCell"_L1},
            {u"pathLabel"_s, "ZEFEllipsisLabel"_L1},     {u"termsLink"_s, "ZEFHyperlinkLabel"_L1},
            {u"laterButton"_s, "ZEFFlatButton"_L1},      {u"helpButton"_s, "ZEFLightStdSSButton"_L1},
            {u"agreeBox"_s, "ZEFLightStdSSCheckbox"_L1}, {u"close"_s, "ZEFLightStdButton"_L1},
        };
        for (const auto& [name, className] : expected) {
            const auto* widget = form->findChild<QWidget*>(name);
            QVERIFY2(widget, qPrintable(name));
            QCOMPARE(QLatin1String(widget->metaObject()->className()), className);
        }
    }

    static void compareProperties(QWidget* form)
    {
        QCOMPARE(form->windowTitle(), u"Order"_s);
        const auto* link = form->findChild<ZEFCommandLinkButton*>();
        QCOMPARE(link->title(), u"Order now"_s);
        QCOMPARE(link->description(), u"Sends the order for %{product}"_s);
        QCOMPARE(link->frameColor(), QColor(0, 102, 51));
        QCOMPARE(link->minimumSize(), QSize(160, 64));
        QVERIFY(link->isDefault());
        const auto* toggle = form->findChild<ZEFToggleButton*>();
        QVERIFY(toggle->isOn());
        QCOMPARE(toggle->onText(), u"Send me news"_s);
        QCOMPARE(toggle->offText(), u"No news"_s);
        QCOMPARE(toggle->spacing(), 9);
        const auto* key = form->findChild<ZEFFormatEdit*>();
        QCOMPARE(key->format(), u"{4}(\\d*)-{4}(\\d*)"_s);
        QCOMPARE(key->lineEditCount(), 2);
        QCOMPARE(key->ignore(), u" ."_s);
        QCOMPARE(key->leftMargin(), 0);
        QCOMPARE(form->findChild<QLineEdit*>(u"countCell"_s)->text(), u"12"_s);
        QCOMPARE(form->findChild<QLabel*>(u"pathLabel"_s)->text(),
                 u"A path that is far too long for the room it has"_s);
        QCOMPARE(form->findChild<QLabel*>(u"pathLabel"_s)->toolTip(), QString());
        QCOMPARE(form->findChild<QLabel*>(u"pathLabel"_s)->textFormat(), Qt::PlainText);
        QCOMPARE(form->findChild<QLabel*>(u"termsLink"_s)->text(),
                 u"<a href=\"https://example.org/terms\">Terms</a>"_s);
        QCOMPARE(form->findChild<QLabel*>(u"laterButton"_s)->focusPolicy(), Qt::StrongFocus);
        QCOMPARE(form->findChild<QCheckBox*>(u"agreeBox"_s)->maximumHeight(), 24);
        QCOMPARE(form->findChild<QPushButton*>(u"helpButton"_s)->styleSheet(), u"color: #224466;"_s);
        QCOMPARE(form->findChild<QPushButton*>(u"close"_s)->text(), u"Close"_s);
    }

private Q_SLOTS:
    //! The committed form, or one that Designer has just saved.
    void loads()
    {
        QFile file(qEnvironmentVariable("DESIGNER_SAVED_FORM", QStringLiteral(SAVED_FORM)));
        QVERIFY(file.open(QIODevice::ReadOnly));
        ZEFUILoader loader(nullptr);
        const std::unique_ptr<QWidget> form(loader.load(&file));
        QVERIFY2(form, qPrintable(loader.errorString()));
        compareClasses(form.get());
        compareProperties(form.get());
    }

    //! Each widget was dropped from the widget box into an empty form.
    void loadsWhatWasDropped()
    {
        const ZEFUIDialog dialog(u"dropped"_s, QString(), nullptr, Qt::Dialog, nullptr);
        QVERIFY(dialog.element()->loaded());
        const auto widgets =
            dialog.layout()->itemAt(0)->widget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        QStringList names;
        for (const QWidget* widget : widgets)
            names.append(QLatin1String(widget->metaObject()->className()) + u' ' + widget->objectName());
        QCOMPARE(
            names,
            QStringList({u"ZEFCommandLinkButton commandLinkButton"_s, u"ZEFToggleButton toggleButton"_s,
                         u"ZEFFormatCell formatCell"_s, u"ZEFFormatEdit formatEdit"_s,
                         u"ZEFEllipsisLabel ellipsisLabel"_s, u"ZEFHyperlinkLabel hyperlinkLabel"_s,
                         u"ZEFFlatButton flatButton"_s, u"ZEFLightStdSSButton styledButton"_s,
                         u"ZEFLightStdSSCheckbox styledCheckBox"_s, u"ZEFLightStdButton paintedButton"_s}));
    }

    void isShownByAHost()
    {
        const std::unique_ptr<ZEFUIDialog> dialog(
            ZEFUIDialog::create(u"saved"_s, QString(), nullptr, Qt::Dialog));
        QVERIFY(dialog);
        compareClasses(dialog.get());
        compareProperties(dialog->layout()->itemAt(0)->widget());
    }
};

ZEF_TEST_MAIN(TestDesignedForm)
#include "test_designedform.moc"
