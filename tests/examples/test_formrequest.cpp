#include <ZEFTest.h>
#include <protocol/FormRequest.h>

class FormRequestTest : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void readsEveryMember();
    void needsOnlyAForm();
    void refusesWhatIsNoJson_data();
    void refusesWhatIsNoJson();
    void refuses_data();
    void refuses();
    void cutsLongQuotes();
};

void FormRequestTest::readsEveryMember()
{
    QString error = QStringLiteral("from before");
    const FormRequest request = FormRequest::fromJson(R"({
        "form": "signin", "locale": "de_AT", "title": "Grüß Gott",
        "dictionaries": [{"a": "1", "b": "%{a}"}, {"a": "2"}],
        "set": {"user_text": "anna %s"},
        "show": ["s1", "s2"], "hide": ["h"], "enable": ["e"], "disable": ["d"],
        "display": {"w1": "k1"}, "showIf": {"w2": "k2"}, "enableIf": {"w3": "k3"},
        "focus": "user", "return": ["user.text", "a.b.c"]})",
                                                      &error);
    QCOMPARE(error, QString());
    QCOMPARE(request.form, QStringLiteral("signin"));
    QCOMPARE(request.locale, QStringLiteral("de_AT"));
    QCOMPARE(request.title, QStringLiteral("Grüß Gott"));
    QCOMPARE(request.dictionaries.size(), size_t(2));
    QCOMPARE(request.dictionaries.at(0).keys(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(request.dictionaries.at(0).getString(QStringLiteral("b")), QStringLiteral("%{a}"));
    QCOMPARE(request.dictionaries.at(1).getString(QStringLiteral("a")), QStringLiteral("2"));
    QCOMPARE(request.values.getString(QStringLiteral("user_text")), QStringLiteral("anna %s"));
    QCOMPARE(request.shown, (QStringList{QStringLiteral("s1"), QStringLiteral("s2")}));
    QCOMPARE(request.hidden, QStringList{QStringLiteral("h")});
    QCOMPARE(request.enabled, QStringList{QStringLiteral("e")});
    QCOMPARE(request.disabled, QStringList{QStringLiteral("d")});
    QCOMPARE(request.displayedBy.getString(QStringLiteral("w1")), QStringLiteral("k1"));
    QCOMPARE(request.shownIf.getString(QStringLiteral("w2")), QStringLiteral("k2"));
    QCOMPARE(request.enabledIf.getString(QStringLiteral("w3")), QStringLiteral("k3"));
    QCOMPARE(request.focus, QStringLiteral("user"));
    QCOMPARE(request.returned, (QStringList{QStringLiteral("user.text"), QStringLiteral("a.b.c")}));
}

void FormRequestTest::needsOnlyAForm()
{
    QString error;
    const FormRequest request = FormRequest::fromJson(R"({"form": "x"})", &error);
    QCOMPARE(error, QString());
    QCOMPARE(request.form, QStringLiteral("x"));
    QVERIFY(request.locale.isEmpty() && request.dictionaries.empty() && request.returned.isEmpty());
}

void FormRequestTest::refusesWhatIsNoJson_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("empty line") << QByteArray("");
    QTest::newRow("no JSON") << QByteArray("form=signin");
    QTest::newRow("cut off") << QByteArray("{\"form\":");
    QTest::newRow("two objects") << QByteArray("{} {}");
    QTest::newRow("not UTF-8") << QByteArray("{\"form\": \"\xff\"}");
    QTest::newRow("too deep") << QByteArray(2000, '[');
}

void FormRequestTest::refusesWhatIsNoJson()
{
    QFETCH(const QByteArray, line);
    QString error;
    FormRequest::fromJson(line, &error);
    // The rest is Qt's, and differs between its versions.
    QVERIFY2(error.startsWith(u"not JSON: "), qPrintable(error));
    QVERIFY(!error.contains(u'\n'));
}

void FormRequestTest::refuses_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& line, const char* error) {
        QTest::newRow(name) << line << QString::fromUtf8(error);
    };
    row("a list", "[]", "a request must be a JSON object");
    row("no form", "{}", "\"form\" is missing");
    row("form without a text", R"({"form": 1})", "\"form\" must be a text");
    row("form null", R"({"form": null})", "\"form\" must be a text");
    row("form empty", R"({"form": ""})", "\"form\" must not be empty");
    row("form a path", R"({"form": "a/b"})", "\"form\" must be a name, not a path: \"a/b\"");
    row("form a Windows path", R"({"form": "..\\b"})", "\"form\" must be a name, not a path: \"..\\b\"");
    row("locale a number", R"({"form": "x", "locale": 7})", "\"locale\" must be a text");
    row("locale too long", R"({"form": "x", "locale": ")" + QByteArray(65, '_') + "\"}",
        "\"locale\" is longer than 64 characters");
    row("title a list", R"({"form": "x", "title": []})", "\"title\" must be a text");
    row("one dictionary", R"({"form": "x", "dictionaries": {}})", "\"dictionaries\" must be a list");
    row("dictionary a text", R"({"form": "x", "dictionaries": ["a"]})",
        "each entry of \"dictionaries\" must be an object");
    row("dictionary with a number", R"({"form": "x", "dictionaries": [{"k": 1}]})",
        "each entry of \"dictionaries\": the value of \"k\" must be a text");
    row("set a list", R"({"form": "x", "set": []})", "\"set\" must be an object");
    row("set a bool", R"({"form": "x", "set": {"a_b": true}})",
        "\"set\": the value of \"a_b\" must be a text");
    row("set without underscore", R"({"form": "x", "set": {"ab": "1"}})",
        "\"set\": \"ab\" is not of the form <widget>_<property>");
    row("set a style sheet", R"({"form": "x", "set": {"user_styleSheet": "a"}})",
        "\"set\": \"user_styleSheet\" names no property that a client may set");
    row("set a text format", R"({"form": "x", "set": {"user_textFormat_text": "RichText"}})",
        "\"set\": \"user_textFormat_text\" names no property that a client may set");
    row("set nothing", R"({"form": "x", "set": {"user_": "a"}})",
        "\"set\": \"user_\" names no property that a client may set");
    row("show a text", R"({"form": "x", "show": "a"})", "\"show\" must be a list");
    row("hide with a number", R"({"form": "x", "hide": [1]})", "each entry of \"hide\" must be a text");
    row("display a list", R"({"form": "x", "display": []})", "\"display\" must be an object");
    row("focus a list", R"({"form": "x", "focus": []})", "\"focus\" must be a text");
    row("return without dot", R"({"form": "x", "return": ["ab"]})",
        "\"return\": \"ab\" is not of the form <widget>.<property>");
    row("unknown member", R"({"form": "x", "retrun": []})", "unknown member \"retrun\"");
    row("percent signs", R"({"form": "x", "%1%n%s": 1})", "unknown member \"%1%n%s\"");
}

void FormRequestTest::refuses()
{
    QFETCH(const QByteArray, line);
    QString error;
    FormRequest::fromJson(line, &error);
    QTEST(error, "error");
}

void FormRequestTest::cutsLongQuotes()
{
    QString error;
    FormRequest::fromJson("{\"form\": \"/" + QByteArray(10000, 'x') + "\"}", &error);
    QCOMPARE(error, u"\"form\" must be a name, not a path: \"/" + QString(59, u'x') + QStringLiteral("…\""));
}

ZEF_TEST_MAIN(FormRequestTest)
#include "test_formrequest.moc"
