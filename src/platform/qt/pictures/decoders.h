// Which of the toolkit's image plug-ins this program takes.
#pragma once

// From here on the toolkit finds its plug-ins for GIF and JPEG and no other for images, however many are installed: it
// asks all that it knows for each icon of its own, and would load them for that. Its other plug-ins are found as
// before. To be called once, after the application object is made and before the first picture or icon is read.
void KeepToPictureDecoders();
