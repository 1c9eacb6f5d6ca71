#pragma once

namespace corma::testing {

// More entries in the tables of the working drawing; the test fails when one cannot be added.

void addLayer(const wchar_t* name, unsigned short colour);
void addTextStyle(const wchar_t* name);

/// One of the host's own linetypes.
void addLinetype(const wchar_t* name);

} // namespace corma::testing
