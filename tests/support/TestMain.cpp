#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    // Tests never need a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Kavorix"));
    QApplication::setApplicationName(QStringLiteral("Kavori"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
