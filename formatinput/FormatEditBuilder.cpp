#include "FormatEditBuilder.h"

#include "SignatureConnection.h"
#include "ZEFFormatCellPrivate.h"
#include "ZEFFormatEditPrivate.h"

#include <QtCore/QDebug>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>

#include <utility>

namespace {

// What every widget of a row costs grows with their number, and a format is short compared with its cells.
constexpr int maxCells = 1000;
constexpr int maxSeparators = maxCells + 1;

void makeConnections(const ZEFFormatCell* cell, const ZEFFormatEdit* edit)
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
        connection.make(cell, edit);
}

// The character may be a percent sign: the finished text is no format.
void report(const QString& text)
{
    QMessageLogger().debug().noquote().nospace() << text;
}

} // namespace

FormatEditBuilder::FormatEditBuilder(ZEFFormatEdit* edit, bool widgets)
    : m_edit(edit)
    , m_widgets(widgets)
    , m_coercions(std::make_shared<std::list<ZEFCoercionSpec>>())
{
}

void FormatEditBuilder::addSeparator(const QString& text)
{
    if (!m_widgets || m_separators >= maxSeparators)
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

void FormatEditBuilder::addCoercion(const QString& text, int start, int end)
{
    m_coercions->emplace_back(text, start, end);
}

void FormatEditBuilder::addCell(const FormatCell& format)
{
    // The final pattern and the suffix that follow are those of a cell that is not there.
    m_lastCell = nullptr;
    ZEFFormatEditPrivate* edit = ZEFFormatEditPrivate::get(m_edit);
    if (!m_widgets || edit->cells.size() >= maxCells)
        return;
    auto* cell = new ZEFFormatCell(m_edit, nullptr);
    ZEFFormatCellPrivate* cellData = ZEFFormatCellPrivate::get(cell);
    cell->setRegexp(format.pattern);
    cell->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    cell->setMaxLength(format.maxLength);
    if (format.minLength >= 0)
        cell->setMinLength(format.minLength);
    cell->setId(static_cast<int>(edit->cells.size()));
    cell->setIgnore(edit->ignore);
    cell->setPrefix(format.prefix);
    cell->setEnforceCase(edit->enforceCase);
    cellData->formatCoercions = m_coercions;
    cellData->formatCoercionCount = static_cast<qsizetype>(m_coercions->size());
    if (format.coercing)
        cellData->addOwnCoercion(format.coercionText, format.coercionStart);
    makeConnections(cell, m_edit);
    edit->cells.append(cell);
    cell->setFocusPolicy(Qt::StrongFocus);
    place(cell);
    m_lastCell = cell;
}

void FormatEditBuilder::setFinalPattern(const QString& pattern)
{
    if (m_lastCell)
        m_lastCell->setFinalRegExp(pattern);
}

void FormatEditBuilder::setSuffix(const QString& text)
{
    if (m_lastCell)
        m_lastCell->setSuffix(text);
}

void FormatEditBuilder::reportUnexpected(const QString& character)
{
    report(ZEFFormatEdit::tr("Syntax error: %1 unexpected").arg(character));
}

void FormatEditBuilder::reportUnexpectedAfterMinimum(const QString& character)
{
    report(ZEFFormatEdit::tr("Syntax error: %1 unexpected after explicit minimum").arg(character));
}

void FormatEditBuilder::place(QWidget* widget)
{
    if (m_edit->layout())
        m_edit->layout()->addWidget(widget);
    if (m_edit->isVisible())
        m_placed.append(widget);
}

void FormatEditBuilder::finish(QWidget* before)
{
    const QList<ZEFFormatCell*> cells = ZEFFormatEditPrivate::get(m_edit)->cells;
    for (ZEFFormatCell* cell : cells) {
        QWidget::setTabOrder(before, cell);
        before = cell;
    }
    // A layout shows a new widget only when events run again; the user may be typing right now.
    if (!m_placed.isEmpty()) {
        // Each widget that is shown would have the layout arrange the whole row.
        const QPointer<QLayout> layout(m_edit->layout());
        const bool enabled = layout && layout->isEnabled();
        if (layout)
            layout->setEnabled(false);
        for (const QPointer<QWidget>& widget : std::as_const(m_placed)) {
            if (widget && m_edit && widget->parentWidget() == m_edit)
                widget->show();
        }
        if (layout)
            layout->setEnabled(enabled);
        if (enabled && layout)
            layout->activate();
    }
    if (!m_edit || m_edit->lineEditCount() == 0)
        return;
    ZEFFormatCell* first = m_edit->editor(0);
    m_edit->setFocusProxy(first);
    const bool focusDropped = std::exchange(ZEFFormatEditPrivate::get(m_edit)->focusDropped, false);
    if (!focusDropped || m_edit->window()->focusWidget())
        return;
    const ZEFFormatCellPrivate::Use use(first);
    first->show();
    first->setFocus();
}
