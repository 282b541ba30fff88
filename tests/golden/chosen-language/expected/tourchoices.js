'use strict';

// What the author of this tour has chosen for it.
tourChoices.language = 'de';
tourChoices.layout = 'side';
