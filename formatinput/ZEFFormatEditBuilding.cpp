// Building the row of a format edit from what the parser decides.

#include <ZEFFormatEdit.h>

#include "CoercionPool.h"
#include "FormatParser.h"
#include "SignatureConnection.h"

#include <QtCore/QDebug>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>

namespace {

// What every widget of a row costs grows with their number, and a format is short compared with its cells.
constexpr int mostCells = 1000;
constexpr int mostSeparators = mostCells + 1;

} // namespace

//! Makes the cells and separators of a format; for an alternate it only reports mistakes.
class FormatEditBuilder : public FormatBuilder {
public:
    FormatEditBuilder(ZEFFormatEdit* edit, bool widgets)
        : m_edit(edit)
        , m_widgets(widgets)
    {
    }

    void addSeparator(const QString& text) override
    {
        if (!m_widgets || m_separators >= mostSeparators)
            return;
        ++m_separators;
        auto* label = new QLabel(m_edit);
        // The text comes from the form and is no markup.
        label->setTextFormat(Qt::PlainText);
        label->setText(u' ' + text + u' ');
        label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        label->setAlignment(Qt::AlignCenter);
        place(label);
    }

    void addCoercion(const QString& text, int start, int end) override { m_pool->add(text, start, end); }

    void addCell(const FormatCell& format) override
    {
        // The final pattern and the suffix that follow are those of a cell that is not there.
        m_lastCell = nullptr;
        if (!m_widgets || m_edit->lineEditCount() >= mostCells)
            return;
        auto* cell = new ZEFFormatCell(m_edit, nullptr);
        cell->setRegexp(format.pattern);
        cell->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        cell->setMaxLength(format.maxLength);
        if (format.minLength >= 0)
            cell->setMinLength(format.minLength);
        cell->setId(m_edit->lineEditCount());
        cell->setIgnore(m_edit->m_ignore);
        cell->setPrefix(format.prefix);
        cell->setEnforceCase(m_edit->m_enforceCase);
        cell->shareCoercions(m_pool);
        if (format.coercing)
            cell->addOwnCoercion(format.coercionText, format.coercionStart);
        connect(cell);
        m_edit->m_cells.append(cell);
        cell->setFocusPolicy(Qt::StrongFocus);
        if (m_edit->m_cells.size() == 1)
            m_edit->setFocusProxy(cell);
        place(cell);
        m_lastCell = cell;
    }

    void setFinalPattern(const QString& pattern) override
    {
        if (m_lastCell)
            m_lastCell->setFinalRegExp(pattern);
    }

    void setSuffix(const QString& text) override
    {
        if (m_lastCell)
            m_lastCell->setSuffix(text);
    }

    void reportUnexpected(const QString& character) override
    {
        report(ZEFFormatEdit::tr("Syntax error: %1 unexpected").arg(character));
    }

    void reportUnexpectedAfterMinimum(const QString& character) override
    {
        report(ZEFFormatEdit::tr("Syntax error: %1 unexpected after explicit minimum").arg(character));
    }

private:
    // The character may be a percent sign: the finished text is no format.
    static void report(const QString& text) { QMessageLogger().debug().noquote().nospace() << text; }

    void place(QWidget* widget) const
    {
        if (m_edit->layout())
            m_edit->layout()->addWidget(widget);
        // A layout shows a new widget only when events run again; the user may be typing right now.
        if (m_edit->isVisible())
            widget->show();
    }

    void connect(ZEFFormatCell* cell) const
    {
        static const SignatureConnection<ZEFFormatCell, ZEFFormatEdit> connections[] = {
            {"2moveLeft(int, QKeyEvent*)", "1moveLeft(int, QKeyEvent*)"},
            {"2moveRight(int, QKeyEvent*)", "1moveRight(int, QKeyEvent*)"},
            {"2textChanged(int, QString&)", "1editorTextChanged(int)"},
            {"2copyMe(void)", "1copy(void)"},
            {"2pasteMe(void)", "1paste(void)"},
            {"2cutMe(void)", "1cut(void)"},
            {"2deleteMe(void)", "1clear(void)"},
            {"2moveTo(int, int, QKeyEvent*)", "1moveTo(int, int, QKeyEvent*)"},
            {"2focusOut( int, QFocusEvent*)", "1childFocusedOut( int, QFocusEvent*)"},
        };
        for (const auto& connection : connections)
            connection.make(cell, m_edit);
    }

    ZEFFormatEdit* m_edit;
    const bool m_widgets;
    std::shared_ptr<CoercionPool> m_pool = std::make_shared<CoercionPool>();
    ZEFFormatCell* m_lastCell = nullptr;
    int m_separators = 0;
};

bool ZEFFormatEdit::parseFormat(const QString& format, int id)
{
    // The format may be a reference to what a receiver replaces.
    const QString source = format;
    const QPointer<ZEFFormatEdit> self(this);
    clearCells();
    if (!self)
        return false;
    FormatEditBuilder builder(this, id == 0);
    const QString master = FormatParser(source, builder).run();
    if (id == 0)
        m_masterRegexp = u'^' + master + u'$';
    else
        m_alternates.insert(id, QRegularExpression(master));
    update();
    // Callers do not look at the result, which has always been false.
    return false;
}
