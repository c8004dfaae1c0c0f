// A service with one form that holds every widget of the library and writes down what its delegate hears:
// accessibleform [LOCALE]

#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFTranslatorCache.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtCore/QLoggingCategory>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

class Delegate : public QObject {
    Q_OBJECT

public:
    explicit Delegate(ZEFUIDialog* host)
        : QObject(host)
        , m_host(host)
    {
        host->element()->setDelegate(this);
        host->element()->connectSlotsByName(this);
        connect(host->findChild<ZEFHyperlinkLabel*>(u"termsLabel"_s),
                &ZEFHyperlinkLabel::internetNotConnected, this, [this](const QString& link) { write(link); });
    }

public Q_SLOTS:
    void orderLink_clicked(ZEFPipeFacilityInvocationContext*) { write(u"orderLink_clicked"_s); }
    void agreeBox_clicked(ZEFPipeFacilityInvocationContext*) { write(u"agreeBox_clicked"_s); }
    void checkButton_clicked(ZEFPipeFacilityInvocationContext*, QVariant nameEdit_text)
    {
        write(u"checkButton_clicked("_s + nameEdit_text.toString() + u')');
        m_host->element()->showChild(u"nameMessage"_s, nameEdit_text.toString().isEmpty());
    }
    void on_soundSwitch_on() { write(u"on()"_s); }
    void on_soundSwitch_off() { write(u"off()"_s); }
    void on_forgotButton_mouseClicked() { write(u"mouseClicked()"_s); }
    void on_keyEdit_textChanged(QValidator::State validity)
    {
        write(u"keyEdit "_s + m_host->findChild<ZEFFormatEdit*>(u"keyEdit"_s)->text());
        if (validity != QValidator::Acceptable)
            return;
        QTranslator* translator =
            ZEFTranslatorCache::translatorForLocale(u"zefmain.qm"_s, m_host->element()->locale());
        m_host->findChild<QLabel*>(u"keyMessage"_s)
            ->setText(ZEFTranslatorCache::localizeString(u"The key is complete."_s, translator, nullptr));
    }

private:
    //! Where a client can read it
    void write(const QString& line)
    {
        m_host->findChild<QLabel*>(u"logLabel"_s)->setAccessibleDescription(line);
    }

    ZEFUIDialog* m_host;
};

int main(int argc, char** argv)
{
    QLoggingCategory::setFilterRules(u"default.debug=false\n*.warning=false"_s);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"accessibleform"_s);
    auto* host = new ZEFUIDialog(u"everything"_s, QString::fromUtf8(argc > 1 ? argv[1] : "en"), nullptr,
                                 Qt::WindowFlags(), nullptr);
    host->setWindowTitle(host->findChild<QWidget*>(u"form"_s)->windowTitle());
    new Delegate(host);
    host->element()->show();
    return QApplication::exec();
}

#include "accessibleform.moc"
