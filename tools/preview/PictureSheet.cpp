#include "PictureSheet.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>

#include <cmath>

QPixmap pictureSheet(const QList<std::pair<QString, QPixmap>>& pictures)
{
    constexpr int gap = 16;
    QWidget sheet;
    sheet.setBackgroundRole(QPalette::Base);
    auto* grid = new QGridLayout(&sheet);
    grid->setContentsMargins(gap, gap, gap, gap);
    grid->setHorizontalSpacing(gap);
    const int columns = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(pictures.size()))));
    for (int i = 0; i < pictures.size(); ++i) {
        const auto& [text, picture] = pictures.at(i);
        auto* caption = new QLabel(text);
        caption->setForegroundRole(QPalette::Text);
        auto* label = new QLabel;
        label->setPixmap(picture);
        label->setFrameShape(QFrame::Box);
        grid->addWidget(caption, 2 * (i / columns), i % columns);
        grid->addWidget(label, 2 * (i / columns) + 1, i % columns, Qt::AlignLeft | Qt::AlignTop);
    }
    sheet.resize(sheet.sizeHint());
    return sheet.grab();
}
