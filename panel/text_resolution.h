#pragma once

#include <string>

// What a widget's "text" in the layout file becomes.
struct ResolvedText {
    // The catalogue id that the widget's words follow after a change of language; empty when the
    // words are no catalogue text.
    std::string text;
    // The words shown at start, code page 1251.
    std::string displayText;
};

// Resolves the value of "text", first rule that fits: anything holding "CVCP-" is a catalogue id
// (an unknown one fails with "invalid map<K, T> key"); "time", "address" and "status" are the
// server's state now; "app_version" and "lib_version" the versions of the host application and
// of the addon library; anything else is literal UTF-8 text.
ResolvedText resolveText(const std::string& value);
