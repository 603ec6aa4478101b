#pragma once

#include <QStringList>

#include <cstdio>

// The quick select command line as a function, so that the fuzzer drives the same code path as
// the program: arguments as the program gets them (the first is its name), messages for the
// user on `messageFile`, the program's exit status returned.
namespace VexaQuickSelectCli {
int run(const QStringList& arguments, std::FILE* messageFile = stderr);
}
