#pragma once

#include <QString>

// Style sheet of the workstation's own areas, in the colours and at the scale of the theme. The look of the
// widgets in them comes from the theme itself.
QString WindowStyle();
