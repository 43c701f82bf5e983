// Drivers of databases are looked for by the program: a test has one, too.
#pragma once

#include <QCoreApplication>

namespace vrk {

inline void have_application()
{
    static int argc = 1;
    static char name[] = "test";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
}

} // namespace vrk
