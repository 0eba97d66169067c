// The device's CEPROPVALs and the engine's properties.
#pragma once

#include <string>
#include <vector>

#include "handset/coredll/cedb/engine/property.h"
#include "handset/include/cedb.h"

namespace cedb {

// False for an unknown type or a string or blob that is missing.
bool ToProperty(const CEPROPVAL& value, Property* property);
// The value; strings and blobs are put to the end of `block`, and the value's pointer gets their offset in
// it.
CEPROPVAL ToValue(const Property& property, std::string* block);
// Turns the offset of a string or blob into its address in the block that begins at `base`.
void Relocate(CEPROPVAL* value, BYTE* base);

}  // namespace cedb
