#pragma once

// Makes every KovaSheet report itself to assistive technology as a dialog. Only the first call
// does anything.
void installSheetAccessibility();
