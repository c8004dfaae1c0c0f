#include "ZEFTest.h"
#include "tools/lint/Delegate.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

class TestDelegate : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void methods_data();
    void methods();
};

void TestDelegate::methods_data()
{
    QTest::addColumn<QByteArray>("header");
    //! "line name(type name, …)" for each method
    QTest::addColumn<QStringList>("methods");

    QTest::newRow("only what Qt can call")
        << QByteArray(
               "class A : public QObject {\n Q_OBJECT\npublic:\n void a();\n Q_INVOKABLE void b();\n"
               "public Q_SLOTS:\n void c();\nprivate:\n void d();\nprotected slots:\n void e();\nQ_SIGNALS:\n"
               " void f();\nsignals:\n void g();\npublic:\n Q_SLOT void h();\n void i();\n};\n")
        << QStringList{u"5 b()"_s, u"7 c()"_s, u"11 e()"_s, u"13 f()"_s, u"15 g()"_s, u"17 h()"_s};
    QTest::newRow("parameters")
        << QByteArray(
               "class A {\npublic slots:\n void a(X* x, const QVariant &b_c = QVariant(1, 2), QVariant, "
               "QMap<int, int> m, QVariant d [[maybe_unused]], [[a]] [[b(1, 2)]] E e[2]) const noexcept;\n "
               "void b(void);\n};\n")
        << QStringList{u"3 a(X* x, const QVariant& b_c, QVariant , QMap<int,int> m, QVariant d, E e[2] )"_s,
                       u"4 b()"_s};
    QTest::newRow("bodies, comments, literals, preprocessor") << QByteArray(
        "#define SLOTS \\\n class B { public slots: void no(); };\n// class C { public slots: void no(); };\n"
        "class A {\n/* public\n slots: */ public slots:\n void a() { if (x) { b(\"}\"); c('}'); } }\n"
        " void d();\n};\n") << QStringList{u"7 a()"_s, u"8 d()"_s};
    QTest::newRow("raw literals") << QByteArray(
        "class A {\nstatic constexpr auto a = R\"({ class B { \"x)\", b = u8R\"-(\n}\" )-\", c = FOR\"}\";\n"
        "public slots:\n void d();\n};\n")
                                  << QStringList{u"5 d()"_s};
    QTest::newRow("macros and exports") << QByteArray(
        "class EXPORT A final : public B<int> {\n Q_OBJECT\n Q_PROPERTY(int a READ a)\n Q_CLASSINFO(\"a\", "
        "\"b\")\n"
        "public Q_SLOTS:\n Q_REVISION(1) void c();\n ~A();\n Q_DISABLE_COPY(A)\n int e = f(1);\n};\n")
                                        << QStringList{u"6 c()"_s, u"9 f(1 )"_s};
    QTest::newRow("no classes of other kinds")
        << QByteArray("enum class E { a };\ntemplate <class T> void f(T);\nclass Later;\nstruct S {\n "
                      "Q_INVOKABLE void g();\n};\n")
        << QStringList{u"5 g()"_s};
    QTest::newRow("cut off") << QByteArray("class A {\npublic slots:\n void a(int b")
                             << QStringList{u"3 a()"_s};
}

void TestDelegate::methods()
{
    QFETCH(const QByteArray, header);
    QFETCH(const QStringList, methods);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"delegate.h"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(header);
    file.close();
    QString error;
    const auto delegate = readDelegate(file.fileName(), &error);
    QVERIFY2(delegate, qPrintable(error));
    QStringList found;
    for (const DelegateMethod& method : delegate->methods) {
        QStringList parameters;
        for (const DelegateParameter& parameter : method.parameters)
            parameters.append(parameter.type + u' ' + parameter.name);
        found.append(QString::number(method.line) + u' ' + method.name + u'(' + parameters.join(u", ")
                     + u')');
    }
    QCOMPARE(found, methods);
}

ZEF_TEST_MAIN(TestDelegate)
#include "test_delegate.moc"
