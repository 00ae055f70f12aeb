// Nothing of its own: the headers that tests include are compiled with it.
