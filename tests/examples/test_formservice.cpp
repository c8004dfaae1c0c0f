// The service in this process, so that its forms can be looked at; the clients are real sockets.

#include <ZEFFormatEdit.h>
#include <ZEFTest.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>
#include <service/ClientConnection.h>
#include <service/FormService.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>
#include <QtGui/QScreen>
#include <QtNetwork/QLocalSocket>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <memory>
#include <vector>

class FormServiceTest : public ZEFTest {
    Q_OBJECT

protected:
    void prepare() override;
    void tidyUp() override;

private Q_SLOTS:
    void signsIn();
    void asksAgainForWhatIsMissing();
    void cancels();
    void answersWhenTheWindowIsClosed();
    void answersOnEscape();
    void answersWhenTheHostIsDeleted();
    void takesAKeyOfTheList();
    void refusesAnotherKey();
    void takesAnyCompleteKeyWithoutAList();
    void setsAndReturnsTheTextOfAFormatEdit_data();
    void setsAndReturnsTheTextOfAFormatEdit();
    void opensAChildForm();
    void staysOpenWhenTheChildFormSaysNo();
    void closesTheChildFormWithItsParent();
    void closesTheFormOfAClientThatVanishes();
    void closesTheChildFormOfAClientThatVanishes();
    void forgetsTheWaitingRequestsOfAClientThatVanishes();
    void sendsAwayAClientWithTooManyWaitingRequests();
    void opensNothingForAnUnknownForm();
    void takesTheClientFromTheOperatingSystem();
    void translates();
    void fallsBackToTheBaseLanguage();
    void isWrittenAsItsLanguage_data();
    void isWrittenAsItsLanguage();
    void needsNoMoreThanASmallScreen_data();
    void needsNoMoreThanASmallScreen();
    void isNotCutWithinTheScreen();
    void leadsToTheFirstCellByItsMnemonic();
    void anUnknownLocaleLeavesTheTextsAsTheyAre();
    void valuesAreData_data();
    void valuesAreData();
    void aHugeTextDoesNotMakeAHugeWindow();
    void survivesOddProperties_data();
    void survivesOddProperties();
    void clientTextIsNeverMarkup();
    void dictionariesAreSearchedInOrder();
    void showsHidesAndEnables();
    void displaysByDictionary();
    void titles_data();
    void titles();
    void returnsNullForWhatIsNotThere();
    void opensAFormForEachClient();

private:
    std::unique_ptr<QLocalSocket> connectClient() const;
    //! Sends a request and returns the form that it opens; null when none opens.
    ZEFUIDialog* open(QLocalSocket& client, const QByteArray& request) const;
    QByteArray answer(QLocalSocket& client) const;
    static QList<ZEFUIDialog*> openForms();
    //! Types as a user does: each key goes to the cell that has the focus by then.
    static void typeKey(const ZEFUIDialog* form, const QString& text);
    static void click(const ZEFUIDialog* form, const char* button);
    static QString labelText(const ZEFUIDialog* form, const char* label);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FormService> m_service;
};

void FormServiceTest::prepare()
{
    // Connections that the library tries on purpose, the lines of its debug log, and the platform.
    TestLog::allow(QRegularExpression(QStringLiteral("debug: .*")));
    TestLog::allow(
        QRegularExpression(QStringLiteral("warning: QObject::connect: No such (signal|slot) ZEFUI.*")));
    TestLog::allow(QStringLiteral("warning: QObject::connect:  (sender name:   'form')"));
    TestLog::allow(
        QRegularExpression(QStringLiteral("(debug|info|warning): This plugin does not support .*")));
    m_folder = std::make_unique<QTemporaryDir>();
    m_service = std::make_unique<FormService>();
    QVERIFY(m_service->listen(m_folder->filePath(QStringLiteral("socket"))));
}

void FormServiceTest::tidyUp()
{
    m_service.reset();
    while (!openForms().isEmpty())
        delete openForms().first();
    m_folder.reset();
}

std::unique_ptr<QLocalSocket> FormServiceTest::connectClient() const
{
    auto client = std::make_unique<QLocalSocket>();
    client->connectToServer(m_folder->filePath(QStringLiteral("socket")));
    return client;
}

ZEFUIDialog* FormServiceTest::open(QLocalSocket& client, const QByteArray& request) const
{
    const QList<ZEFUIDialog*> before = openForms();
    client.write(request + '\n');
    ZEFUIDialog* opened = nullptr;
    [&] {
        QTRY_VERIFY(openForms().size() > before.size());
        const QList<ZEFUIDialog*> forms = openForms();
        for (ZEFUIDialog* form : forms) {
            if (!before.contains(form))
                opened = form;
        }
        QTRY_VERIFY(opened->isVisible());
    }();
    return opened;
}

QByteArray FormServiceTest::answer(QLocalSocket& client) const
{
    [&] { QTRY_VERIFY(client.canReadLine()); }();
    return client.readLine().trimmed();
}

QList<ZEFUIDialog*> FormServiceTest::openForms()
{
    QList<ZEFUIDialog*> forms;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (auto* form = qobject_cast<ZEFUIDialog*>(widget))
            forms.append(form);
    }
    return forms;
}

void FormServiceTest::typeKey(const ZEFUIDialog* form, const QString& text)
{
    form->findChild<ZEFFormatEdit*>(QStringLiteral("productKey"))->setFocus();
    for (const QChar character : text)
        QTest::keyClicks(form->focusWidget(), character);
}

void FormServiceTest::click(const ZEFUIDialog* form, const char* button)
{
    auto* widget = form->findChild<QPushButton*>(QLatin1String(button));
    QVERIFY(widget);
    QTest::mouseClick(widget, Qt::LeftButton);
}

QString FormServiceTest::labelText(const ZEFUIDialog* form, const char* label)
{
    const auto* widget = form->findChild<QLabel*>(QLatin1String(label));
    return widget ? widget->text() : QStringLiteral("no such label");
}

void FormServiceTest::signsIn()
{
    const auto client = connectClient();
    const ZEFUIDialog* form =
        open(*client, R"({"form": "signin", "return": ["user.text", "password.text", "remember.checked"]})");
    QVERIFY(form);
    QTest::keyClicks(form->findChild<QLineEdit*>(QStringLiteral("user")), QStringLiteral("anna"));
    QTest::keyClicks(form->findChild<QLineEdit*>(QStringLiteral("password")), QStringLiteral("a b"));
    click(form, "okButton");
    QCOMPARE(
        answer(*client),
        QByteArray(
            R"({"selection":1,"values":{"password.text":"a b","remember.checked":false,"user.text":"anna"}})"));
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::asksAgainForWhatIsMissing()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "signin", "set": {"user_text": "anna"}})");
    QVERIFY(form);
    const auto* error = form->findChild<QLabel*>(QStringLiteral("errorLabel"));
    QVERIFY(!error->isVisible());
    const int height = form->height();
    click(form, "okButton");
    QVERIFY(error->isVisible());
    QVERIFY(form->height() > height);
    auto* password = form->findChild<QLineEdit*>(QStringLiteral("password"));
    QCOMPARE(form->focusWidget(), password);
    QTest::keyClicks(password, QStringLiteral("x"));
    QVERIFY(!error->isVisible());
    QCOMPARE(form->height(), height);
    QVERIFY(!client->canReadLine());
}

void FormServiceTest::cancels()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "signin"})");
    QVERIFY(form);
    click(form, "cancelButton");
    QCOMPARE(answer(*client), QByteArray(R"({"selection":2,"values":{}})"));
}

void FormServiceTest::answersWhenTheWindowIsClosed()
{
    const auto client = connectClient();
    ZEFUIDialog* form =
        open(*client, R"({"form": "signin", "set": {"user_text": "x"}, "return": ["user.text"]})");
    QVERIFY(form);
    form->close();
    QCOMPARE(answer(*client), QByteArray(R"({"selection":0,"values":{"user.text":"x"}})"));
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::answersOnEscape()
{
    const auto client = connectClient();
    ZEFUIDialog* form = open(*client, R"({"form": "signin"})");
    QVERIFY(form);
    QTest::keyClick(form, Qt::Key_Escape);
    QCOMPARE(answer(*client), QByteArray(R"({"selection":0,"values":{}})"));
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::answersWhenTheHostIsDeleted()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "signin"})");
    QVERIFY(form);
    delete form;
    QCOMPARE(answer(*client), QByteArray(R"({"error":"the form was closed without an answer"})"));
    QVERIFY(open(*client, R"({"form": "signin"})"));
}

void FormServiceTest::takesAKeyOfTheList()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client,
                                   QByteArray(R"({"form": "activation", "locale": "de",
        "dictionaries": [{"product_keys": "AAAA1111BBBB2222 7K02M3QX9PLD5T8R"}],
        "return": ["productKey.text"]})")
                                       .simplified());
    QVERIFY(form);
    const auto* ok = form->findChild<QPushButton*>(QStringLiteral("okButton"));
    QVERIFY(!ok->isEnabled());
    QCOMPARE(labelText(form, "keyMessage"),
             QStringLiteral("Geben Sie die vier Gruppen Ihres Schlüssels ein."));
    // The letter O stands for the digit 0.
    typeKey(form, QStringLiteral("7KO2M3QX9PLD5T8"));
    QVERIFY(!ok->isEnabled());
    QTest::keyClicks(form->focusWidget(), QStringLiteral("R"));
    QVERIFY(ok->isEnabled());
    QCOMPARE(labelText(form, "keyMessage"), QStringLiteral("Dieser Schlüssel passt zu Ihrer Bestellung."));
    click(form, "okButton");
    QCOMPARE(answer(*client),
             QByteArray(R"({"selection":1,"values":{"productKey.text":"7K02-M3QX-9PLD-5T8R"}})"));
}

void FormServiceTest::refusesAnotherKey()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(
        *client,
        R"({"form": "activation", "dictionaries": [{"product_keys": "7K02M3QX9PLD5T8R", "list_invalid_message": "No, %{product_keys}."}]})");
    QVERIFY(form);
    typeKey(form, QStringLiteral("AAAA1111BBBB2222"));
    QVERIFY(!form->findChild<QPushButton*>(QStringLiteral("okButton"))->isEnabled());
    // The client's text goes before the service's own, and is not searched again.
    QCOMPARE(labelText(form, "keyMessage"), QStringLiteral("No, %{product_keys}."));
}

void FormServiceTest::takesAnyCompleteKeyWithoutAList()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "activation", "return": ["productKey.text"]})");
    QVERIFY(form);
    const auto* ok = form->findChild<QPushButton*>(QStringLiteral("okButton"));
    QVERIFY(!ok->isEnabled());
    typeKey(form, QStringLiteral("AAAA1111BBBB222"));
    QVERIFY(!ok->isEnabled());
    QTest::keyClicks(form->focusWidget(), QStringLiteral("2"));
    QVERIFY(ok->isEnabled());
}

void FormServiceTest::setsAndReturnsTheTextOfAFormatEdit_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("with separators") << QByteArray("AAAA-1111-BBBB-2222-PR");
    QTest::newRow("without separators") << QByteArray("AAAA1111BBBB2222PR");
    QTest::newRow("some separators, in lower case") << QByteArray(" aaaa1111-bbbb2222pr ");
}

void FormServiceTest::setsAndReturnsTheTextOfAFormatEdit()
{
    QFETCH(const QByteArray, key);
    const auto client = connectClient();
    ZEFUIDialog* form = open(*client,
                             R"({"form": "activation", "set": {"productKey_text": ")" + key
                                 + R"("}, "return": ["productKey.text"]})");
    QVERIFY(form);
    QVERIFY(form->findChild<QPushButton*>(QStringLiteral("okButton"))->isEnabled());
    form->close();
    QCOMPARE(answer(*client),
             QByteArray(R"({"selection":0,"values":{"productKey.text":"AAAA-1111-BBBB-2222-PR"}})"));
}

void FormServiceTest::opensAChildForm()
{
    const auto client = connectClient();
    const ZEFUIDialog* form =
        open(*client, R"({"form": "activation", "locale": "de", "dictionaries": [{"product": "P"}]})");
    QVERIFY(form);
    click(form, "laterButton");
    QCOMPARE(form->element()->childElementCount(), 1);
    const auto* child = qobject_cast<ZEFUIDialog*>(form->element()->childElement(0)->widget());
    QVERIFY(child);
    QCOMPARE(child->parent(), form);
    QCOMPARE(child->windowModality(), Qt::WindowModal);
    QCOMPARE(labelText(child, "questionLabel"), QStringLiteral("Ohne Aktivierung von P fortfahren?"));
    click(child, "okButton");
    QCOMPARE(answer(*client), QByteArray(R"({"selection":3,"values":{}})"));
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::staysOpenWhenTheChildFormSaysNo()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "activation"})");
    QVERIFY(form);
    click(form, "laterButton");
    click(qobject_cast<ZEFUIDialog*>(form->element()->childElement(0)->widget()), "cancelButton");
    QTRY_COMPARE(form->element()->childElementCount(), 0);
    QCOMPARE(openForms().size(), 1);
    QVERIFY(!form->element()->isClosing());
    click(form, "cancelButton");
    QCOMPARE(answer(*client), QByteArray(R"({"selection":2,"values":{}})"));
}

void FormServiceTest::closesTheChildFormWithItsParent()
{
    const auto client = connectClient();
    ZEFUIDialog* form = open(*client, R"({"form": "activation"})");
    QVERIFY(form);
    click(form, "laterButton");
    QCOMPARE(openForms().size(), 2);
    form->close();
    QCOMPARE(answer(*client), QByteArray(R"({"selection":0,"values":{}})"));
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::closesTheFormOfAClientThatVanishes()
{
    const auto client = connectClient();
    QVERIFY(open(*client, R"({"form": "signin"})"));
    client->abort();
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::closesTheChildFormOfAClientThatVanishes()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "activation"})");
    QVERIFY(form);
    click(form, "laterButton");
    QCOMPARE(openForms().size(), 2);
    client->abort();
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::forgetsTheWaitingRequestsOfAClientThatVanishes()
{
    const auto client = connectClient();
    QVERIFY(open(*client,
                 R"({"form": "signin"})"
                 "\n"
                 R"({"form": "activation"})"));
    client->abort();
    QTRY_COMPARE(openForms().size(), 0);
    const auto next = connectClient();
    const ZEFUIDialog* form = open(*next, R"({"form": "confirmation"})");
    QVERIFY(form);
    QCOMPARE(openForms(), QList<ZEFUIDialog*>{const_cast<ZEFUIDialog*>(form)});
}

void FormServiceTest::sendsAwayAClientWithTooManyWaitingRequests()
{
    const auto client = connectClient();
    ZEFUIDialog* form = open(*client, R"({"form": "signin"})");
    QVERIFY(form);
    // Each counts 64 bytes.
    client->write(QByteArray(ClientConnection::MaximumWaiting / 64, '\n'));
    QTRY_COMPARE(client->bytesToWrite(), 0);
    client->write("\n");
    QCOMPARE(answer(*client), QByteArray(R"({"error":"too many requests are waiting"})"));
    QTRY_COMPARE(client->state(), QLocalSocket::UnconnectedState);
    QTRY_COMPARE(openForms().size(), 0);
}

void FormServiceTest::opensNothingForAnUnknownForm()
{
    const auto client = connectClient();
    client->write(R"({"form": "nowhere"})"
                  "\n");
    QCOMPARE(answer(*client), QByteArray(R"({"error":"unknown form: nowhere"})"));
    QCOMPARE(openForms().size(), 0);
}

void FormServiceTest::takesTheClientFromTheOperatingSystem()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "activation"})");
    QVERIFY(form);
    QCOMPARE(form->element()->clientPID(), static_cast<long>(QCoreApplication::applicationPid()));
    click(form, "laterButton");
    QCOMPARE(form->element()->childElement(0)->clientPID(),
             static_cast<long>(QCoreApplication::applicationPid()));
}

void FormServiceTest::translates()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(
        *client,
        R"({"form": "signin", "locale": "de", "dictionaries": [{"product": "P", "reason": "Your session has expired."}]})");
    QVERIFY(form);
    QCOMPARE(labelText(form, "titleLabel"), QStringLiteral("Bei P anmelden"));
    // A text of the client in the context "zefmain".
    QCOMPARE(labelText(form, "hintLabel"), QStringLiteral("Ihre Sitzung ist abgelaufen."));
    QCOMPARE(form->windowTitle(), QStringLiteral("Anmelden"));
}

void FormServiceTest::fallsBackToTheBaseLanguage()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "signin", "locale": "de_AT"})");
    QVERIFY(form);
    QCOMPARE(labelText(form, "passwordLabel"), QStringLiteral("&Kennwort"));
}

void FormServiceTest::isWrittenAsItsLanguage_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("English") << QByteArray("en") << Qt::LeftToRight;
    QTest::newRow("German") << QByteArray("de_AT") << Qt::LeftToRight;
    QTest::newRow("Hebrew") << QByteArray("he") << Qt::RightToLeft;
    QTest::newRow("Arabic") << QByteArray("ar_EG") << Qt::RightToLeft;
    QTest::newRow("nonsense") << QByteArray("x y z") << Qt::LeftToRight;
}

void FormServiceTest::isWrittenAsItsLanguage()
{
    QFETCH(const QByteArray, locale);
    QFETCH(const Qt::LayoutDirection, direction);
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "activation", "locale": ")" + locale + R"("})");
    QVERIFY(form);
    QCOMPARE(form->layoutDirection(), direction);
    QCOMPARE(form->findChild<QLabel*>(QStringLiteral("keyLabel"))->layoutDirection(), direction);
    // A product key is read from the left in every language.
    QCOMPARE(form->findChild<ZEFFormatEdit*>(QStringLiteral("productKey"))->layoutDirection(),
             Qt::LeftToRight);
    click(form, "laterButton");
    QTRY_COMPARE(openForms().size(), 2);
    for (const ZEFUIDialog* opened : openForms())
        QCOMPARE(opened->layoutDirection(), direction);
}

void FormServiceTest::needsNoMoreThanASmallScreen_data()
{
    QTest::addColumn<QByteArray>("request");
    for (const char* locale : {"en", "de"}) {
        QTest::addRow("sign-in, %s", locale)
            << R"({"form": "signin", "locale": ")" + QByteArray(locale) + R"(", "show": ["errorLabel"]})";
        QTest::addRow("activation, %s", locale)
            << R"({"form": "activation", "locale": ")" + QByteArray(locale) + R"("})";
        QTest::addRow("confirmation, %s", locale)
            << R"({"form": "confirmation", "locale": ")" + QByteArray(locale) + R"("})";
    }
}

//! A window is never smaller than its form needs, whatever the screen; so the form must not need much.
void FormServiceTest::needsNoMoreThanASmallScreen()
{
    QFETCH(const QByteArray, request);
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, request);
    QVERIFY(form);
    QVERIFY(form->height() >= form->layout()->totalHeightForWidth(form->width()));
    // 1280 x 720 pixels at a scale of 2, less a title and a task bar
    constexpr QSize room(640, 360 - 80);
    QVERIFY2(form->width() <= room.width() && form->height() <= room.height(),
             qPrintable(QStringLiteral("%1 x %2").arg(form->width()).arg(form->height())));
}

//! Qt's own way of fitting a window to its contents ends at two thirds of the screen.
void FormServiceTest::isNotCutWithinTheScreen()
{
    const auto client = connectClient();
    const auto otherClient = connectClient();
    const int screen = QGuiApplication::primaryScreen()->availableSize().height();
    const ZEFUIDialog* plain = open(*client, R"({"form": "signin"})");
    QVERIFY(plain);
    const int line = plain->fontMetrics().lineSpacing();
    const qsizetype lines = (screen * 4 / 5 - plain->height()) / line;
    const ZEFUIDialog* form = open(*otherClient,
                                   R"({"form": "signin", "set": {"hintLabel_text": ")"
                                       + QByteArray("x\\n").repeated(lines) + R"("}})");
    QVERIFY(form);
    QVERIFY(form->height() > screen * 3 / 4);
    QVERIFY(form->height() >= form->layout()->totalHeightForWidth(form->width()));
}

void FormServiceTest::leadsToTheFirstCellByItsMnemonic()
{
    const auto client = connectClient();
    ZEFUIDialog* form = open(*client, R"({"form": "activation"})");
    QVERIFY(form);
    form->activateWindow();
    QTRY_VERIFY(form->isActiveWindow());
    form->findChild<QPushButton*>(QStringLiteral("cancelButton"))->setFocus();
    QTest::keyClick(form, Qt::Key_K, Qt::AltModifier);
    QCOMPARE(form->focusWidget(), form->findChild<ZEFFormatEdit*>(QStringLiteral("productKey"))->editor(0));
}

void FormServiceTest::anUnknownLocaleLeavesTheTextsAsTheyAre()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, R"({"form": "signin", "locale": "../xx_%n"})");
    QVERIFY(form);
    QCOMPARE(labelText(form, "passwordLabel"), QStringLiteral("&Password"));
}

void FormServiceTest::valuesAreData_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("format") << QStringLiteral("%s %n %1 %d");
    QTest::newRow("placeholder") << QStringLiteral("%{product} %{");
    QTest::newRow("markup") << QStringLiteral("<b>bold</b><img src='x'>");
    QTest::newRow("quotes") << QStringLiteral("\"\\\" äöü \U0001F600");
    QTest::newRow("almost 1 MiB") << QString(1'000'000, u'x');
}

void FormServiceTest::valuesAreData()
{
    QFETCH(const QString, value);
    const QJsonObject request{{QStringLiteral("form"), QStringLiteral("signin")},
                              {QStringLiteral("dictionaries"),
                               QJsonArray{QJsonObject{{QStringLiteral("product"), QStringLiteral("P")}}}},
                              {QStringLiteral("set"), QJsonObject{{QStringLiteral("hintLabel_text"), value}}},
                              {QStringLiteral("return"), QJsonArray{QStringLiteral("hintLabel.text")}}};
    const auto client = connectClient();
    ZEFUIDialog* form = open(*client, QJsonDocument(request).toJson(QJsonDocument::Compact));
    QVERIFY(form);
    form->close();
    const QJsonObject values =
        QJsonDocument::fromJson(answer(*client)).object().value(QStringLiteral("values")).toObject();
    QCOMPARE(values.value(QStringLiteral("hintLabel.text")).toString(), value);
}

void FormServiceTest::aHugeTextDoesNotMakeAHugeWindow()
{
    const auto client = connectClient();
    const ZEFUIDialog* form =
        open(*client,
             R"({"form": "signin", "set": {"cancelButton_text": ")" + QByteArray(100'000, 'x')
                 + R"(", "hintLabel_text": ")" + QByteArray(100'000, 'x') + R"("}})");
    QVERIFY(form);
    const QSize screen = QGuiApplication::primaryScreen()->size();
    QVERIFY(form->width() <= screen.width());
    QVERIFY(form->height() <= screen.height());
}

void FormServiceTest::survivesOddProperties_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QByteArray>("value");
    const auto row = [](const char* property, const QByteArray& value) {
        QTest::newRow(property) << QByteArray(property) << value;
    };
    row("form_visible", "false");
    row("form_enabled", "false");
    row("productKey_checked", "true");
    row("okButton_value", "x");
    row("keyMessage_text_text", "");
    row("_text", "unnamed");
}

void FormServiceTest::survivesOddProperties()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QByteArray, value);
    const auto client = connectClient();
    ZEFUIDialog* form = open(*client,
                             R"({"form": "activation", "dictionaries": [{"product_keys": "A"}], "set": {")"
                                 + property + R"(": ")" + value + R"("}})");
    QVERIFY(form);
    form->close();
    QCOMPARE(answer(*client), QByteArray(R"({"selection":0,"values":{}})"));
}

void FormServiceTest::clientTextIsNeverMarkup()
{
    const auto client = connectClient();
    for (const QByteArray form : {"signin", "activation", "confirmation"}) {
        const ZEFUIDialog* dialog = open(*client, "{\"form\": \"" + form + "\"}");
        QVERIFY(dialog);
        const QList<QLabel*> labels = dialog->findChildren<QLabel*>();
        for (const QLabel* label : labels)
            QCOMPARE(label->textFormat(), Qt::PlainText);
        delete dialog;
    }
}

void FormServiceTest::dictionariesAreSearchedInOrder()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(
        *client,
        R"({"form": "signin", "dictionaries": [{"product": "first"}, {"product": "2", "reason": "%{product}"}]})");
    QVERIFY(form);
    QCOMPARE(labelText(form, "titleLabel"), QStringLiteral("Sign in to first"));
    // A value cannot smuggle in a placeholder.
    QCOMPARE(labelText(form, "hintLabel"), QStringLiteral("%{product}"));
}

void FormServiceTest::showsHidesAndEnables()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client,
                                   QByteArray(R"({"form": "signin", "show": ["errorLabel", "nobody"],
        "hide": ["remember"], "disable": ["user"], "enable": ["password"],
        "set": {"password_enabled": "false"}, "focus": "password"})")
                                       .simplified());
    QVERIFY(form);
    QVERIFY(form->findChild<QWidget*>(QStringLiteral("errorLabel"))->isVisible());
    QVERIFY(!form->findChild<QWidget*>(QStringLiteral("remember"))->isVisible());
    QVERIFY(!form->findChild<QWidget*>(QStringLiteral("user"))->isEnabled());
    QVERIFY(form->findChild<QWidget*>(QStringLiteral("password"))->isEnabled());
    QCOMPARE(form->focusWidget(), form->findChild<QWidget*>(QStringLiteral("password")));
}

void FormServiceTest::displaysByDictionary()
{
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client,
                                   QByteArray(R"({"form": "activation",
        "dictionaries": [{"two": "2", "one": "1", "yes": "True", "no": "False"}],
        "display": {"trialLabel": "two", "cancelButton": "one"},
        "showIf": {"laterButton": "missing", "keyMessage": "yes"},
        "enableIf": {"productKey": "no", "keyLabel": "missing"}})")
                                       .simplified());
    QVERIFY(form);
    QVERIFY(!form->findChild<QWidget*>(QStringLiteral("trialLabel"))->isVisible());
    QVERIFY(form->findChild<QWidget*>(QStringLiteral("cancelButton"))->isVisible());
    QVERIFY(!form->findChild<QWidget*>(QStringLiteral("cancelButton"))->isEnabled());
    QVERIFY(!form->findChild<QWidget*>(QStringLiteral("laterButton"))->isVisible());
    QVERIFY(form->findChild<QWidget*>(QStringLiteral("keyMessage"))->isVisible());
    QVERIFY(!form->findChild<QWidget*>(QStringLiteral("productKey"))->isEnabled());
    QVERIFY(form->findChild<QWidget*>(QStringLiteral("keyLabel"))->isEnabled());
}

void FormServiceTest::titles_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("title");
    QTest::newRow("the form's own") << QByteArray(R"({"form": "activation"})")
                                    << QStringLiteral("Product activation");
    QTest::newRow("the request's") << QByteArray(R"({"form": "activation", "title": "50 %n"})")
                                   << QStringLiteral("50 %n");
    QTest::newRow("with a placeholder")
        << QByteArray(R"({"form": "activation", "title": "%{p} 2", "dictionaries": [{"p": "P"}]})")
        << QStringLiteral("P 2");
}

void FormServiceTest::titles()
{
    QFETCH(const QByteArray, request);
    const auto client = connectClient();
    const ZEFUIDialog* form = open(*client, request);
    QVERIFY(form);
    QTEST(form->windowTitle(), "title");
}

void FormServiceTest::returnsNullForWhatIsNotThere()
{
    const auto client = connectClient();
    ZEFUIDialog* form =
        open(*client, R"({"form": "signin", "return": ["nobody.text", "user.nothing", ".", "user."]})");
    QVERIFY(form);
    form->close();
    QCOMPARE(
        answer(*client),
        QByteArray(
            R"({"selection":0,"values":{".":null,"nobody.text":null,"user.":null,"user.nothing":null}})"));
}

void FormServiceTest::opensAFormForEachClient()
{
    std::vector<std::unique_ptr<QLocalSocket>> clients;
    QList<ZEFUIDialog*> forms;
    for (int i = 0; i < 20; ++i) {
        clients.push_back(connectClient());
        forms.append(open(
            *clients.back(),
            R"({"form": "confirmation", "return": ["questionLabel.text"], "set": {"questionLabel_text": ")"
                + QByteArray::number(i) + "\"}}"));
        QVERIFY(forms.last());
    }
    QCOMPARE(openForms().size(), 20);
    for (int i = 19; i >= 0; --i) {
        click(forms.at(i), "okButton");
        QCOMPARE(answer(*clients.at(static_cast<size_t>(i))),
                 R"({"selection":1,"values":{"questionLabel.text":")" + QByteArray::number(i) + "\"}}");
    }
    QTRY_COMPARE(openForms().size(), 0);
}

ZEF_TEST_MAIN(FormServiceTest)
#include "test_formservice.moc"
