#pragma once

/// Letters of Unicode, as far as comparing words needs them.
namespace wendmark {

/// The character as it is compared where case does not count: the small letter of a capital. Letters that
/// differ otherwise stay so, as "\u00df" and "ss" do.
char32_t foldCase(char32_t character);

/// Whether the character is part of a word: a letter, a digit, or an accent on one.
bool belongsToWord(char32_t character);

} // namespace wendmark
