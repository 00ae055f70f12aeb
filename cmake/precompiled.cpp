// Nothing of its own: the headers that others include are compiled with it.
