#ifndef DEMO_FIELDS_H
#define DEMO_FIELDS_H

class SamplePlugin;

// The plugin's settings page: built from fields, shown as XML, changed the
// way a user interface would, merged back by id, and its button clicked.
// The click is posted to the dispatcher and runs once the event loop does.
void showFieldsDemo(SamplePlugin* plugin);

#endif
