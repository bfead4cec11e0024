#pragma once

// The largest size that the process has had so far, in MB: memory that was asked for counts, used
// or not.
long PeakSize();
