#pragma once

#include "host/acdb_database.h"
#include <corma/blocks.h>

/// The records of the working database's blocks whose names fit a wild-card pattern, case ignored,
/// put behind what is in `result`; model and paper space and anonymous blocks are not among them.
/// A record that cannot be opened is reported and passed over. RTNORM; RTERROR without a drawing or
/// its table of blocks.
int xx_block_records(AcDbObjectIdArray& result, const wchar_t* pattern);
