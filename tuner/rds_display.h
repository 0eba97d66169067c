// The RDS texts on the main screen.
#pragma once

class CMainState;

// Asks the tuner for its next RDS text and for the programme type and shows them; without RDS data the fields
// are cleared. Monitor thread.
void ShowRDS(CMainState& state);
