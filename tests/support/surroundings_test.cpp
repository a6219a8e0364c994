#include <QDir>
#include <QFontDatabase>

#include <gtest/gtest.h>

namespace kelvrane {
namespace {

TEST(Surroundings, ShowTheNamedFontsAndNothingOfTheUsers) {
    const QStringList families = QFontDatabase::families();
    for (const char* family :
         {"DejaVu Sans", "Liberation Mono", "Liberation Sans", "Liberation Serif"})
        EXPECT_TRUE(families.contains(QLatin1String(family)))
            << family << " isn't there; packages.txt names its package";
    const QStringList generic{"Monospace", "Sans Serif", "Serif"}; // added by Qt
    for (const QString& family : families)
        EXPECT_TRUE(generic.contains(family) || family.startsWith(QLatin1String("DejaVu ")) ||
                    family.startsWith(QLatin1String("Liberation ")))
            << family.toStdString();
    EXPECT_TRUE(QDir::homePath().startsWith(QDir::tempPath()));
}

} // namespace
} // namespace kelvrane
