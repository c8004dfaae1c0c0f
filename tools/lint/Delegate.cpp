#include "Delegate.h"

#include "CppTokens.h"
#include "tools/common/InputFile.h"
#include "tools/common/JsonFile.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Tokens = QList<CppToken>;

//! The position after the bracket that closes the one at \a open; the end if none does.
qsizetype afterBracket(const Tokens& tokens, qsizetype open)
{
    int depth = 0;
    for (qsizetype i = open; i < tokens.size(); ++i) {
        const CppToken& token = tokens.at(i);
        if (token == "("_L1 || token == "{"_L1 || token == "["_L1)
            ++depth;
        else if ((token == ")"_L1 || token == "}"_L1 || token == "]"_L1) && --depth <= 0)
            return i + 1;
    }
    return tokens.size();
}

//! The tokens as one text, with blanks only between names.
QString joined(const Tokens& tokens)
{
    QString text;
    bool afterName = false;
    for (const CppToken& token : tokens) {
        if (afterName && token.isName())
            text += u' ';
        text += token.text;
        afterName = token.isName();
    }
    return text;
}

//! Removes [[maybe_unused]] and the like.
void removeAttributes(Tokens* tokens)
{
    for (qsizetype i = 0; i + 1 < tokens->size(); ++i) {
        while (i + 1 < tokens->size() && tokens->at(i) == "["_L1 && tokens->at(i + 1) == "["_L1)
            tokens->remove(i, afterBracket(*tokens, i) - i);
    }
}

DelegateParameter parameterFrom(Tokens tokens)
{
    removeAttributes(&tokens);
    const auto defaultValue =
        std::find_if(tokens.cbegin(), tokens.cend(), [](const CppToken& token) { return token == "="_L1; });
    tokens.resize(std::distance(tokens.cbegin(), defaultValue));
    DelegateParameter parameter;
    // "QVariant" and "const QVariant" are types without a name.
    static const QStringList qualifiers{u"const"_s, u"volatile"_s, u"struct"_s, u"class"_s, u"::"_s};
    const auto typeSize = std::count_if(tokens.cbegin(), tokens.cend(), [](const CppToken& token) {
        return token != ":"_L1 && !qualifiers.contains(token.text);
    });
    if (typeSize > 1 && tokens.constLast().isName() && tokens.at(tokens.size() - 2) != ":"_L1) {
        parameter.name = tokens.constLast().text;
        tokens.removeLast();
    }
    parameter.type = joined(tokens);
    return parameter;
}

QList<DelegateParameter> parametersFrom(const Tokens& tokens)
{
    QList<DelegateParameter> parameters;
    if (tokens.isEmpty() || (tokens.size() == 1 && tokens.constFirst() == "void"_L1))
        return parameters;
    Tokens current;
    int depth = 0;
    for (const CppToken& token : tokens) {
        if (token == ","_L1 && depth == 0) {
            parameters.append(parameterFrom(current));
            current.clear();
            continue;
        }
        if (token == "<"_L1 || token == "("_L1 || token == "{"_L1 || token == "["_L1)
            ++depth;
        else if (token == ">"_L1 || token == ")"_L1 || token == "}"_L1 || token == "]"_L1)
            --depth;
        current.append(token);
    }
    parameters.append(parameterFrom(current));
    return parameters;
}

//! The method that a declaration declares, if it is one.
std::optional<DelegateMethod> methodFrom(const Tokens& declaration)
{
    for (qsizetype i = 1; i < declaration.size(); ++i) {
        if (declaration.at(i) != "("_L1)
            continue;
        const CppToken& name = declaration.at(i - 1);
        if (!name.isName() || (i > 1 && declaration.at(i - 2) == "~"_L1))
            return std::nullopt;
        const qsizetype end = afterBracket(declaration, i);
        return DelegateMethod{
            name.text, parametersFrom(declaration.sliced(i + 1, qMax<qsizetype>(end - i - 2, 0))), name.line};
    }
    return std::nullopt;
}

//! Reads the body of one class.
class ClassReader {
public:
    ClassReader(const Tokens& tokens, qsizetype begin, qsizetype end)
        : m_tokens(tokens)
        , m_position(begin)
        , m_end(end)
    {
    }

    QList<DelegateMethod> read();

private:
    bool takeSection();
    bool takeMacro();
    Tokens takeDeclaration();

    const Tokens& m_tokens;
    qsizetype m_position;
    const qsizetype m_end;
    bool m_callableSection = false;
    bool m_callable = false;
};

QList<DelegateMethod> ClassReader::read()
{
    QList<DelegateMethod> methods;
    while (m_position < m_end) {
        if (takeSection() || takeMacro())
            continue;
        const Tokens declaration = takeDeclaration();
        if (m_callable || m_callableSection) {
            if (auto method = methodFrom(declaration))
                methods.append(std::move(*method));
        }
        m_callable = false;
    }
    return methods;
}

//! Takes "public Q_SLOTS:" and the like.
bool ClassReader::takeSection()
{
    static const QStringList access{u"public"_s, u"protected"_s, u"private"_s};
    static const QStringList callable{u"slots"_s, u"Q_SLOTS"_s, u"signals"_s, u"Q_SIGNALS"_s};
    qsizetype next = m_position;
    if (access.contains(m_tokens.at(next).text))
        ++next;
    const bool isCallable = next < m_end && callable.contains(m_tokens.at(next).text);
    if (isCallable)
        ++next;
    if (next == m_position || next >= m_end || m_tokens.at(next) != ":"_L1)
        return false;
    m_callableSection = isCallable;
    m_callable = false;
    m_position = next + 1;
    return true;
}

//! Takes one of Qt's macros at the beginning of a declaration.
bool ClassReader::takeMacro()
{
    if (!m_tokens.at(m_position).text.startsWith(u"Q_"))
        return false;
    static const QStringList callable{u"Q_INVOKABLE"_s, u"Q_SLOT"_s, u"Q_SIGNAL"_s};
    m_callable = m_callable || callable.contains(m_tokens.at(m_position).text);
    ++m_position;
    if (m_position < m_end && m_tokens.at(m_position) == "("_L1)
        m_position = qMin(afterBracket(m_tokens, m_position), m_end);
    return true;
}

//! Takes everything up to a semicolon or a body.
Tokens ClassReader::takeDeclaration()
{
    Tokens declaration;
    while (m_position < m_end) {
        const CppToken& token = m_tokens.at(m_position);
        if (token == ";"_L1) {
            ++m_position;
            break;
        }
        if (token == "{"_L1) {
            m_position = qMin(afterBracket(m_tokens, m_position), m_end);
            break;
        }
        if (token == "("_L1 || token == "["_L1) {
            const qsizetype end = qMin(afterBracket(m_tokens, m_position), m_end);
            declaration += m_tokens.sliced(m_position, end - m_position);
            m_position = end;
            continue;
        }
        declaration.append(token);
        ++m_position;
    }
    return declaration;
}

QList<DelegateMethod> methodsInHeader(const Tokens& tokens)
{
    QList<DelegateMethod> methods;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if ((tokens.at(i) != "class"_L1 && tokens.at(i) != "struct"_L1)
            || (i > 0 && tokens.at(i - 1) == "enum"_L1))
            continue;
        const auto isEndOfHead = [](const CppToken& token) {
            return token == "{"_L1 || token == ";"_L1 || token == "("_L1 || token == ")"_L1
                || token == "class"_L1 || token == "struct"_L1;
        };
        const auto head = std::find_if(tokens.cbegin() + i + 1, tokens.cend(), isEndOfHead);
        if (head == tokens.cend() || *head != "{"_L1)
            continue;
        const qsizetype body = std::distance(tokens.cbegin(), head);
        const qsizetype end = afterBracket(tokens, body);
        methods += ClassReader(tokens, body + 1, end - 1).read();
        i = end - 1;
    }
    return methods;
}

bool readSignatures(const QByteArray& json, Delegate* delegate, QString* error)
{
    const std::optional<QJsonDocument> document = parseJson(delegate->path, json, error);
    if (!document)
        return false;
    if (!document->isArray()) {
        *error = delegate->path + u": must hold an array of signatures";
        return false;
    }
    const QList<qint64> lines = stringLines(json);
    const QJsonArray signatures = document->array();
    for (const QJsonValue value : signatures) {
        const QString signature = value.toString();
        // A name of its own makes a signature without a return type read like a declaration.
        auto method = methodFrom(cppTokens(u"void " + signature, nullptr));
        if (!value.isString() || !method) {
            *error = delegate->path + u": each entry must be a signature such as \"ok_clicked()\"";
            return false;
        }
        method->line = lines.at(delegate->methods.size());
        delegate->methods.append(std::move(*method));
    }
    return true;
}

} // namespace

std::optional<Delegate> readDelegate(const QString& path, QString* error)
{
    const std::optional<QString> text = readTextFile(path, error);
    if (!text)
        return std::nullopt;
    Delegate delegate;
    delegate.path = path;
    if (path.endsWith(u".json", Qt::CaseInsensitive)) {
        if (!readSignatures(text->toUtf8(), &delegate, error))
            return std::nullopt;
    } else {
        delegate.methods = methodsInHeader(cppTokens(*text, &delegate.suppressions));
        if (delegate.methods.isEmpty()) {
            *error = path + u": has no class with slots, signals or Q_INVOKABLE methods";
            return std::nullopt;
        }
    }
    return delegate;
}
