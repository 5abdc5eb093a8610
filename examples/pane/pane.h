/* The example pane's entry points: what its controller calls. */
#ifndef EXAMPLE_PANE_H
#define EXAMPLE_PANE_H

#include "varnix/pane.h"

#ifdef __cplusplus
extern "C" {
#endif

VARNIX_PANE_FUNCTION void examplePaneDidLoad(UIViewController *controller);
VARNIX_PANE_FUNCTION void examplePaneWillAppear(UIViewController *controller);
VARNIX_PANE_FUNCTION void examplePaneWillDisappear(UIViewController *controller);

/* The group at the pane's end. */
VARNIX_PANE_FUNCTION PSSpecifier *examplePaneFooter(void);

/* Its buttons. */
VARNIX_PANE_FUNCTION int examplePaneRestart(void);
VARNIX_PANE_FUNCTION void examplePaneWrite(void);
VARNIX_PANE_FUNCTION void examplePaneFollow(void);
VARNIX_PANE_FUNCTION void examplePaneProfile(void);

#ifdef __cplusplus
}
#endif

#endif
