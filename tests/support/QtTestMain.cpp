// The main function of test programs that show widgets: one application for all cases, in the program's look.

#include "appearance/Look.h"

#include <QApplication>
#include <QLocale>

#include <gmock/gmock.h>

int main(int argc, char* argv[]) {
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale::c());
    veltrano::applyLook(application);
    return RUN_ALL_TESTS();
}
