#pragma once

// Makes every KovaSheet report itself to assistive technology as a dialog. May be called often.
void installSheetAccessibility();
