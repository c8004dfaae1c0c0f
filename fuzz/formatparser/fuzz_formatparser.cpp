// The machine of the format language: any text, checked against what the calls of the builder must add up to.

#include <support/FuzzTarget.h>
#include <support/FuzzText.h>

#include <formatinput/FormatParser.h>

#include <QtCore/QStringList>

namespace {

/*!
 * Takes the pieces of the master pattern off its front, in the order in which they are built, and writes
 * down what is built.
 */
class Checker : public FormatBuilder {
public:
    QStringList lines;
    qsizetype cells = 0;
    qsizetype reportedCodeUnits = 0;
    bool suffixSet = false;
    QString dropped;

    //! Once the master pattern is known: whether it holds exactly the pieces that were built.
    bool isMaster(QStringView master) const
    {
        for (const Piece& piece : m_pieces) {
            if (piece.isCell ? !takeCell(&master, piece.text) : !takeSeparator(&master, piece.text))
                return false;
        }
        return master.isEmpty();
    }

    void addSeparator(const QString& text) override
    {
        FUZZ_REQUIRE(!suffixSet);
        FUZZ_REQUIRE(!text.isEmpty());
        m_pieces.append({false, text});
        m_separator = text;
        lines += u'-' + text;
    }

    void addCoercion(const QString& text, int start, int end) override
    {
        FUZZ_REQUIRE(!suffixSet);
        FUZZ_REQUIRE(start >= 0 && end >= -1);
        FUZZ_REQUIRE(!text.contains(u'|') && !text.contains(u'}'));
        lines += QStringLiteral("| %1 %2 ").arg(start).arg(end) + text;
    }

    void addCell(const FormatCell& cell) override
    {
        FUZZ_REQUIRE(!suffixSet);
        FUZZ_REQUIRE(cell.maxLength >= 0 && cell.minLength >= -1);
        FUZZ_REQUIRE(cell.prefix == m_separator);
        FUZZ_REQUIRE(cell.coercing || (cell.coercionText.isEmpty() && cell.coercionStart == 0));
        FUZZ_REQUIRE(cell.coercionStart >= 0);
        m_pieces.append({true, cell.pattern});
        m_separator.clear();
        ++cells;
        lines += QStringLiteral("( %1 %2 %3 %4 ")
                     .arg(cell.maxLength)
                     .arg(cell.minLength)
                     .arg(cell.coercing)
                     .arg(cell.coercionStart)
            + cell.pattern + u'\n' + cell.coercionText;
    }

    void setFinalPattern(const QString& pattern) override
    {
        FUZZ_REQUIRE(!suffixSet);
        // It follows a cell at once.
        FUZZ_REQUIRE(!m_pieces.isEmpty() && m_pieces.constLast().isCell);
        lines += u'$' + pattern;
    }

    void setSuffix(const QString& text) override
    {
        FUZZ_REQUIRE(!suffixSet);
        FUZZ_REQUIRE(!text.isEmpty() && text == m_separator);
        suffixSet = true;
        lines += u'>' + text;
    }

    void reportUnexpected(const QString& character) override
    {
        FUZZ_REQUIRE(character.size() == 1
                     || (character.size() == 2 && character.at(0).isHighSurrogate()
                         && character.at(1).isLowSurrogate()));
        FUZZ_REQUIRE(!character.at(0).isDigit());
        FUZZ_REQUIRE(!QStringView(u",:|}").contains(character.at(0)));
        reportedCodeUnits += character.size();
        lines += u'?' + character;
    }

    void reportUnexpectedAfterMinimum(const QString& character) override
    {
        FUZZ_REQUIRE(character == u"|");
        ++reportedCodeUnits;
        lines += u'!' + character;
    }

    void reportDropped(const QString& text) override
    {
        FUZZ_REQUIRE(dropped.isEmpty());
        dropped = text;
        lines += u'#' + text;
    }

private:
    struct Piece {
        bool isCell;
        QString text;
    };

    static bool take(QStringView* master, QStringView expected)
    {
        if (!master->startsWith(expected))
            return false;
        *master = master->sliced(expected.size());
        return true;
    }

    static bool takeCell(QStringView* master, QStringView pattern)
    {
        return take(master, u"(") && take(master, pattern) && take(master, u")");
    }

    //! \a shown as a pattern: a bracket that an escape has brought keeps its backslash there.
    static bool takeSeparator(QStringView* master, QStringView shown)
    {
        if (!take(master, u"(?:"))
            return false;
        for (qsizetype i = 0; i < shown.size(); ++i) {
            const QChar c = shown.at(i);
            const bool escape = c == u'\\';
            if (!escape && QStringView(u"(){}").contains(c))
                take(master, u"\\");
            if (!take(master, shown.sliced(i, 1)))
                return false;
            // What an escape stands for is no bracket: those are shown without the backslash.
            if (escape && (++i == shown.size() || !take(master, shown.sliced(i, 1))))
                return false;
        }
        return take(master, u")?");
    }

    QList<Piece> m_pieces;
    QString m_separator;
};

void check(const QString& format)
{
    Checker checker;
    const QString master = FormatParser(format, checker).run();
    FUZZ_REQUIRE(checker.isMaster(master));
    // Each character belongs to at most one mistake, and each separator or group to characters of its own.
    FUZZ_REQUIRE(checker.reportedCodeUnits <= format.size());
    FUZZ_REQUIRE(checker.dropped.size() <= format.size());
    FUZZ_REQUIRE(master.size() <= 6 * format.size());

    Checker again;
    FUZZ_REQUIRE(FormatParser(format, again).run() == master);
    FUZZ_REQUIRE(again.lines == checker.lines);

    // Wherever a format is cut off, the rest only adds: nothing that was built changes.
    Checker head;
    const QString headMaster =
        FormatParser(QStringView(format).chopped(format.isEmpty() ? 0 : 1), head).run();
    FUZZ_REQUIRE(master.startsWith(headMaster));
    FUZZ_REQUIRE(head.cells <= checker.cells);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    check(textOf(QByteArrayView(data, static_cast<qsizetype>(size))));
    return 0;
}
