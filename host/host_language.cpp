#include "host/host_facts.h"

// The catalogues' own reader of the product's "Language" value does exactly this: a missing value
// is Russian ("1049"), an unknown code or any failure Ukrainian.
Language readLanguage() {
    return startupLanguage();
}
