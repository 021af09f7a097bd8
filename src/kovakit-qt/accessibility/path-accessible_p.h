#pragma once

class KovaButtonPath;

// Makes @p path report itself to assistive technology as a tool bar of its buttons, for its cells
// say nothing, and its arrows as separators. For its constructor.
void installPathAccessibility(KovaButtonPath *path);
