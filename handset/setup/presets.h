// What a handset holds when it leaves the shop: the first registry values and the preset favourites.
#pragma once

namespace panel {

// Writes every first value and favourite that is not there yet, and the first favourite as the station that
// the tuner begins on; what is there stays as it is. False when the user's registry refuses.
bool WriteFirstRegistryValues();
// The favourites from which the radio builds its channel volume. All of them or, when the favourites' key is
// already there, none.
bool WritePresetFavourites();

}  // namespace panel
