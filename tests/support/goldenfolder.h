#pragma once

#include <QDir>
#include <QTest>

#include <cstdio>

/// A collection of cases larger than that of the project. A program that judges by
/// nothing else is skipped as a whole where there is none.

/// A folder of the one that the environment variable ZEPHRANT_GOLDEN names, by a whole
/// path. It may be missing.
inline QDir goldenFolder(const char *name)
{
    return QDir(qEnvironmentVariable("ZEPHRANT_GOLDEN") + '/' + name);
}

/// The exit status that CTest takes for a skipped test.
constexpr int SkippedStatus = 77;

/// Runs all tests of a class, if the folder is there. The number of failures, which is
/// the usual exit status, could be that of a skip: it is 0 or 1 here.
template <class Test> int runWithGoldenFolder(const char *name, int argc, char **argv)
{
    const QDir folder = goldenFolder(name);
    if (qEnvironmentVariableIsEmpty("ZEPHRANT_GOLDEN") || !folder.exists()) {
        std::printf("skipped: ZEPHRANT_GOLDEN names no folder with \"%s\"\n", name);
        return SkippedStatus;
    }
    Test test;
    return QTest::qExec(&test, argc, argv) == 0 ? 0 : 1;
}
