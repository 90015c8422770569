// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QCoreApplication>
#include <QTest>
#ifdef QT_WIDGETS_LIB
#include "Hausstil.h"

#include <QApplication>
#elif defined(QT_GUI_LIB)
#include <QGuiApplication>
#endif

#include <type_traits>

// A folder's test classes are one program; each makes itself known to it with one of the macros below, and is
// run by "PROGRAM CLASS [arguments of Qt Test]".

using TestMain = int (*)(int argc, char *argv[]);

// Makes a class known under `name`, which lives as long as the program. Returns true.
bool RegisterTest(const char *name, TestMain run);

// A test that needs no application object.
struct NoApplication
{
    NoApplication(int & /*argc*/, char ** /*argv*/) {}
};

#ifdef QT_WIDGETS_LIB
using TestApplication = QApplication;
#elif defined(QT_GUI_LIB)
using TestApplication = QGuiApplication;
#else
using TestApplication = QCoreApplication;
#endif

template <typename Test, typename Application>
int RunTest(int argc, char *argv[])
{
    const Application application(argc, argv);
#ifdef QT_WIDGETS_LIB
    if constexpr (std::is_same_v<Application, QApplication>)
        paukfix::Hausstil::Einrichten(); // windows as users see them
#endif
    Test test;
    return QTest::qExec(&test, argc, argv);
}

#define PAUKFIX_REGISTER_TEST(Test, Main)                                                                    \
    namespace {                                                                                              \
    [[maybe_unused]] const bool Test##Known = RegisterTest(#Test, Main);                                     \
    }

// A test of windows, where its folder links any.
#define PAUKFIX_TEST(Test) PAUKFIX_REGISTER_TEST(Test, (&RunTest<Test, TestApplication>))
#define PAUKFIX_CORE_TEST(Test) PAUKFIX_REGISTER_TEST(Test, (&RunTest<Test, QCoreApplication>))
#define PAUKFIX_APPLESS_TEST(Test) PAUKFIX_REGISTER_TEST(Test, (&RunTest<Test, NoApplication>))
