#include <ZEFBase.h>
#include <ZEFFormatEdit.h>
#include <ZEFUIVersion.h>

#include <QtWidgets/QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    ZEFFormatEdit edit(nullptr);
    edit.setFormat(QStringLiteral("{1}(a)-{1}(b)-{1}(c)-{1}(d)-{1}(e)"));
    ZEFBase::logDebug(edit.format());
    std::printf("zefui %s: %d cells\n", ZEFUI_VERSION_STRING, edit.lineEditCount());
    return 0;
}
