#pragma once

// The two settings that the server reads by itself from the application data store. Neither
// restarts the server, and a failure to store them is ignored without a word.

// Stores "cv_port_autoselect". Turning it off warns that a free port must then be configured.
void setPortAutoselect(bool on);

// Stores "cv_use_unc_paths".
void setUseUncPaths(bool on);
