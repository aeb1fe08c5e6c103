#pragma once

/// What every test speaks: GoogleTest, the toolkit with its events and literals, and how its texts are shown by
/// expectations that fail.

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>
#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>

using namespace Qt::StringLiterals;

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toUtf8().constData() << '"'; }

inline void PrintTo(const QStringList& texts, std::ostream* out) {
    for (const QString& text : texts)
        *out << "\n    \"" << text.toUtf8().constData() << '"';
}
