#pragma once

#include <QString>

#include "editor/common/Codes.h"

/// What the bill list shows.
struct Listing {
    enum class Of { Nothing, Chapter, Query };

    Of of = Of::Nothing;
    /// The chapter's code, or what the codes of the bills contain.
    QString text;
    /// The bills could not be read: none are shown, though there may be some.
    bool failed = false;
};

/// What is listed when the chapter with the code `chapter` is chosen: only those on the deepest level have bills.
inline Listing listingOf(const QString& chapter) {
    return holdsBills(chapter) ? Listing{Listing::Of::Chapter, chapter} : Listing();
}
