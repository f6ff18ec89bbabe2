// Files dropped on a window from another program.
#pragma once

class FormWindow;

// From now on the window of a form takes the files that its form takes (Form::TakesFile), one at a time. The pointer
// shows what is refused.
void TakeFileDrops(FormWindow& window);
