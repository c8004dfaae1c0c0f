#pragma once

#include "BoundedPattern.h"
#include "MatchingTime.h"

#include <ZEFFormatCell.h>

#include <QtCore/QPointer>

#include <functional>
#include <list>
#include <memory>
#include <optional>

//! The state of a ZEFFormatCell.
class ZEFFormatCellPrivate {
public:
    explicit ZEFFormatCellPrivate(ZEFFormatCell* cell);

    static ZEFFormatCellPrivate* get(const ZEFFormatCell* cell) { return cell->d.get(); }

    //! Keeps a dropped cell alive while somebody works with it. What happens meanwhile is one action.
    class Use {
    public:
        explicit Use(ZEFFormatCell* cell);
        ~Use();

    private:
        Q_DISABLE_COPY_MOVE(Use)
        QPointer<ZEFFormatCell> m_cell;
        MatchingTime m_action;
    };
    //! A QSignalBlocker that leaves a cell silent that is dropped meanwhile.
    class SignalsBlocked {
    public:
        explicit SignalsBlocked(ZEFFormatCell* cell);
        ~SignalsBlocked();

    private:
        Q_DISABLE_COPY_MOVE(SignalsBlocked)
        QPointer<ZEFFormatCell> m_cell;
        bool m_before;
    };

    //! Takes the cell out of its edit for good: silent, without a parent, deleted when nobody uses it.
    void drop();
    //! Counts a use from the first receiver of a signal of QLineEdit to the last one.
    void watchSignals();
    void receiverAdded();

    void fitWidth();
    QColor wantedBase() const;
    void chooseColours();
    //! Takes over a new font, or the colours that come with a new palette of the application.
    void followChange(QEvent::Type change);
    void addOwnCoercion(const QString& pairs, int start);
    //! The form in which \a text passes; none when it does not.
    std::optional<QString> acceptedForm(const QString& text);
    //! Removes the halves of cut surrogate pairs from \a text, which is the cell's, and from the cell.
    QString mended(const QString& text);

    //! Whether what the user types is ignored, or finds no room.
    bool swallows(const QString& typed) const;
    //! Has \a handle enter what the user types, and moves on when that fills the cell. Returns whether it was
    //! typed at the end.
    bool enter(const QString& typed, const std::function<void()>& handle);
    void characterTyped(QKeyEvent* e);
    void pasteByKey(QKeyEvent* e);
    //! ZEFFormatCell::paste() by the user, who writes into no cell that is read-only or disabled.
    void pasteByUser();
    bool pastesTooMuch(const QString& pasted) const;
    void saveSelection();

    ZEFFormatCell* const q;
    int id = 0;
    int minLength = -1;
    int enforceCase = 0;
    QString ignore;
    QString prefix;
    QString suffix;
    QString equivs;
    bool selectOutside = false;
    bool mousePressed = false;
    int savedSelectionStart = -1;
    int savedSelectionEnd = -1;
    int savedCursor = 0;
    //! The base colour of setMinLength(), invalid before.
    QColor givenBase;
    //! The width of setMaxLength(), 0 before.
    int fittedWidth = 0;
    int highlightHeight = 0;
    QColor highlightColour = Qt::white;

    BoundedPattern finalPattern;
    bool rewriting = false;
    //! The format's closed coercions. Those that the cell has come before its others.
    std::shared_ptr<const std::list<ZEFCoercionSpec>> formatCoercions;
    qsizetype formatCoercionCount = 0;
    QList<const ZEFCoercionSpec*> coercions;
    std::list<ZEFCoercionSpec> ownCoercions;

    //! The text that was judged last.
    struct Verdict {
        QString text;
        //! As it stands; otherwise in no form.
        bool passes;
        //! As they were: their owner may have changed them since.
        QList<ZEFCoercionSpec> coercions;
    };
    std::optional<Verdict> verdict;

    bool dropped = false;
    int uses = 0;
    //! The receiver of the connections that are the last ones; there are none while nobody else listens.
    std::unique_ptr<QObject> lastReceiver;
    bool lastReceiverOvertaken = false;

private:
    void beginUse();
    void endUse();
    void connectLastReceiver();
    std::optional<QString> coercedForm(const QString& text) const;
};
