#include "PseudoTranslation.h"

#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortText = 10;
constexpr qsizetype longText = 30;

QChar accented(QChar letter)
{
    static const QString plain = u"AaCcDdEeGgHhIiJjKkLlNnOoRrSsTtUuWwYyZz"_s;
    static const QString accents = u"ÅåÇçÐðÉéĜĝĤĥÎîĴĵĶķĻļÑñÖöŔŕŠšŢţÛûŴŵÝýŽž"_s;
    const qsizetype index = plain.indexOf(letter);
    return index < 0 ? letter : accents.at(index);
}

//! How many characters translators need more: the more, the shorter the text is.
qsizetype growth(qsizetype length)
{
    if (length <= shortText)
        return length;
    return length <= longText ? length * 3 / 5 : length * 7 / 20;
}

//! Words of about this length together, with a blank before each.
QString filler(qsizetype length)
{
    static const QStringList words{u"lörém"_s, u"îpsûm"_s, u"dölör"_s, u"šîţ"_s, u"åméţ"_s};
    QString text;
    for (qsizetype i = 0; text.size() < length; ++i)
        text += u' ' + words.at(i % words.size());
    return text;
}

} // namespace

QString pseudoTranslated(const QString& text)
{
    static const QRegularExpression kept(u"(?<markup><[^<>]*>)|%\\{[^}]*\\}|&#?\\w+;|&.|%L?\\w+"_s);
    QString result;
    // Where what is read begins and ends; markup around it is not.
    qsizetype first = -1;
    qsizetype last = -1;
    bool hasLetters = false;
    const auto add = [&](const QString& piece, bool isRead) {
        if (isRead && first < 0)
            first = result.size();
        result += piece;
        if (isRead)
            last = result.size();
    };
    const auto addPlain = [&](QStringView plain) {
        if (plain.isEmpty())
            return;
        QString piece;
        for (const QChar character : plain) {
            piece += accented(character);
            hasLetters = hasLetters || character.isLetter();
        }
        add(piece, !plain.trimmed().isEmpty());
    };
    qsizetype from = 0;
    for (QRegularExpressionMatchIterator matches = kept.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        addPlain(QStringView(text).sliced(from, match.capturedStart() - from));
        add(match.captured(), match.capturedView(u"markup").isEmpty());
        from = match.capturedEnd();
    }
    addPlain(QStringView(text).sliced(from));
    if (!hasLetters)
        return text;
    result.insert(last, filler(growth(last - first)) + u']');
    result.insert(first, u'[');
    return result;
}

PseudoTranslator::PseudoTranslator(const QString& context)
    : m_context(context.toUtf8())
{
}

bool PseudoTranslator::isEmpty() const
{
    return false;
}

QString PseudoTranslator::translate(const char* context, const char* sourceText, const char*, int) const
{
    // A null text means that others are asked.
    return m_context == context ? pseudoTranslated(QString::fromUtf8(sourceText)) : QString();
}
