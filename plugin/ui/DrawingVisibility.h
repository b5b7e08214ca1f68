#pragma once

// Makes every invisible entity of the current space visible again and refreshes the screen. Locked
// and frozen layers are left alone. Needs the document's write lock.
void ShowHiddenEntities();
