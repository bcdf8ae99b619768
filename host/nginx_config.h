#pragma once

#include <optional>
#include <string>

// The server's "conf/nginx.conf" as text, for one read or change of the level in its first
// `error_log` directive. The file is read at construction and the object is dropped after use.
//
// nginx syntax isn't parsed: the level is what stands between the second blank behind
// "error_log" and the next ";". The directive is expected as `error_log logs/error.log info;`.
class NginxConfig {
public:
    // What writeLevel did.
    enum WriteResult { Written = 0, Unchanged = 1, Refused = 2 };

    // Reads the file, trying again three times, half a second apart, while it can't be read: the
    // server or an editor may hold it for a moment. Never throws for an unreadable file.
    NginxConfig();

    // The level word of the file, or an empty text when the file couldn't be read or holds no
    // level.
    std::string currentLevel() const;

    // Puts the word of `selectedLogLevel` in place of the level, keeping every other byte.
    // Refused when no valid level is selected, the file can't be written, or it was read but has no
    // ";" behind the place of the level: where the word would go can't be told there.
    int writeLevel();

    // Splits `text` around its level. Searches that find nothing give the all-ones position, and
    // positions are added to as std::string arithmetic does: a missing "error_log" makes the
    // search for the blanks start at position 8. Without a ";" behind the place of the level the
    // file has no level, and `before` and `after` stay empty.
    void split();

    std::string path;
    std::string text;
    // `text` up to and including the blank in front of the level.
    std::string before;
    // `text` from the ";" behind the level to the end.
    std::string after;
    std::optional<std::string> level;
    // Whether the file could be read; an unreadable one is written with the bare word.
    bool read = false;

private:
    void load(int retries);
};
