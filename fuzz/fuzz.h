// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

// What each fuzz target is: libFuzzer calls the first function once and the second with one input
// after the other. A target ends the process where the library does wrong; the sanitizers do so
// where it reads or computes what it may not.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

// Makes the application object, without a screen and at scale 1, and a folder for temporary files
// of this process alone, which is removed at its end. For LLVMFuzzerInitialize().
void startFuzzing(int *argc, char ***argv);

// That folder.
QString scratchFolder();

// The input as bytes and, read as UTF-8, as text.
[[nodiscard]] QByteArray bytesOf(const std::uint8_t *data, std::size_t size);
[[nodiscard]] QString textOf(const std::uint8_t *data, std::size_t size);

// Ends the process with both texts if they differ. libFuzzer keeps the input.
void expectEqual(const QString &actual, const QString &expected, const char *what);

// Ends the process with @p what unless @p holds.
void expect(bool holds, const char *what);

// Replaces the content of a file; ends the process if that fails.
void writeFile(const QString &path, const QByteArray &content);
