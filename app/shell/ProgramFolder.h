#pragma once

/// Makes the program folder of a user who has none yet from the samples of an installed copy: whole or, with an Error,
/// not at all. One that holds anything is the user's and stays as it is, whatever a newer version brings. Where the
/// program runs in its own folder there is nothing to make.
void makeProgramFolder();
