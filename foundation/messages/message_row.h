#pragma once

// One row of a message catalogue: the id and its words in the three languages, as UTF-8
// source text. The catalogue turns them into code page 1251 when it is built.
struct MessageRow {
    const char* id;
    const char* russian;
    const char* english;
    const char* ukrainian;
};
