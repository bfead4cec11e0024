#pragma once

// Returns how many processors the caller may run on; 0 if nobody knows. Any thread.
int UsableProcessors();
