#pragma once

#include "foundation/language.h"

// The user's language as the registry's "Language" holds it. A missing value is Russian; an
// unknown code, or any failure on the way, is Ukrainian. Never raises.
Language readLanguage();
