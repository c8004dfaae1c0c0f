#include "StyleSheet.h"

#include "tools/common/InputFile.h"

#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace {

//! \a text with its comments blanked out and the line breaks kept; \a suppressions may be null.
QString withoutComments(QString text, Suppressions* suppressions)
{
    qint64 line = 1;
    qsizetype counted = 0;
    const auto lineOf = [&](qsizetype position) {
        line += QStringView(text).sliced(counted, position - counted).count(u'\n');
        counted = position;
        return line;
    };
    qsizetype from = text.indexOf(u"/*");
    while (from >= 0) {
        const qsizetype close = text.indexOf(u"*/", from + 2);
        const qsizetype end = close < 0 ? text.size() : close + 2;
        if (suppressions && close >= 0) {
            if (const auto rules = suppressedRules(QStringView(text).sliced(from + 2, close - from - 2))) {
                const qint64 firstLine = lineOf(from);
                suppressions->append({firstLine, lineOf(close) + 1, *rules});
            }
        }
        for (qsizetype i = from; i < end; ++i) {
            if (text.at(i) != u'\n')
                text[i] = u' ';
        }
        from = text.indexOf(u"/*", end);
    }
    return text;
}

bool isNameCharacter(QChar character)
{
    return character.isLetterOrNumber() || character == u'_' || character == u'-'
        || character.unicode() > 127;
}

class SelectorReader {
public:
    explicit SelectorReader(QStringView text)
        : m_text(text)
    {
    }

    QList<SimpleSelector> read();

private:
    QString takeName();
    void skipAttribute();
    void skipArguments();

    QStringView m_text;
    qsizetype m_position = 0;
};

QList<SimpleSelector> SelectorReader::read()
{
    QList<SimpleSelector> parts;
    bool startsPart = true;
    bool isChild = false;
    while (m_position < m_text.size()) {
        const QChar character = m_text.at(m_position);
        if (character.isSpace() || character == u'>') {
            isChild = isChild || character == u'>';
            startsPart = true;
            ++m_position;
            continue;
        }
        if (startsPart) {
            parts.emplaceBack();
            parts.last().isChild = isChild;
            startsPart = false;
            isChild = false;
        }
        SimpleSelector& part = parts.last();
        if (isNameCharacter(character)) {
            part.type = takeName();
            continue;
        }
        ++m_position;
        if (character == u'#') {
            part.objectName = takeName();
        } else if (character == u'.') {
            part.exactClasses.append(takeName());
        } else if (character == u'[') {
            skipAttribute();
        } else if (character == u':') {
            // "::subcontrol", ":state" and ":!state"
            while (m_position < m_text.size()
                   && (m_text.at(m_position) == u':' || m_text.at(m_position) == u'!'))
                ++m_position;
            takeName();
            skipArguments();
        }
    }
    return parts;
}

QString SelectorReader::takeName()
{
    const qsizetype start = m_position;
    while (m_position < m_text.size() && isNameCharacter(m_text.at(m_position)))
        ++m_position;
    return m_text.sliced(start, m_position - start).toString();
}

void SelectorReader::skipAttribute()
{
    QChar quote;
    for (; m_position < m_text.size(); ++m_position) {
        const QChar character = m_text.at(m_position);
        if (!quote.isNull()) {
            if (character == quote)
                quote = QChar();
        } else if (character == u'"' || character == u'\'') {
            quote = character;
        } else if (character == u']') {
            ++m_position;
            return;
        }
    }
}

void SelectorReader::skipArguments()
{
    if (m_position >= m_text.size() || m_text.at(m_position) != u'(')
        return;
    const qsizetype end = m_text.indexOf(u')', m_position);
    m_position = end < 0 ? m_text.size() : end + 1;
}

//! The first \a wanted at or after \a from that stands in no quotes; the size of \a text without one.
qsizetype findUnquoted(QStringView text, QChar wanted, qsizetype from)
{
    QChar quote;
    for (qsizetype i = from; i < text.size(); ++i) {
        const QChar character = text.at(i);
        if (!quote.isNull()) {
            if (character == u'\\')
                ++i;
            else if (character == quote)
                quote = QChar();
        } else if (character == u'"' || character == u'\'') {
            quote = character;
        } else if (character == wanted) {
            return i;
        }
    }
    return text.size();
}

} // namespace

QList<Selector> selectorsOf(const QString& text, qint64 firstLine)
{
    QList<Selector> selectors;
    const QString sheet = withoutComments(text, nullptr);
    qint64 line = firstLine;
    qsizetype counted = 0;
    for (qsizetype start = 0; start < sheet.size();) {
        const qsizetype open = findUnquoted(sheet, u'{', start);
        if (open == sheet.size())
            break;
        for (qsizetype from = start; from < open;) {
            const qsizetype end = findUnquoted(QStringView(sheet).first(open), u',', from);
            const QStringView piece = QStringView(sheet).sliced(from, end - from);
            const QStringView selector = piece.trimmed();
            if (!selector.isEmpty()) {
                const qsizetype position = from + (selector.data() - piece.data());
                line += QStringView(sheet).sliced(counted, position - counted).count(u'\n');
                counted = position;
                selectors.append({selector.toString().simplified(), SelectorReader(selector).read(), line});
            }
            from = end + 1;
        }
        start = findUnquoted(sheet, u'}', open + 1) + 1;
    }
    return selectors;
}

std::optional<StyleSheet> readStyleSheet(const QString& path, QString* error)
{
    const std::optional<QString> text = readTextFile(path, error);
    if (!text)
        return std::nullopt;
    StyleSheet sheet;
    sheet.path = path;
    const QString name = QFileInfo(path).completeBaseName();
    sheet.objectNames.append(name);
    if (name.startsWith(u"win_"))
        sheet.objectNames.append(name.sliced(4));
    sheet.selectors = selectorsOf(*text, 1);
    withoutComments(*text, &sheet.suppressions);
    return sheet;
}
