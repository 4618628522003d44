/* The least that a program can be: what the system takes to start and end one. */
int main(void) { return 0; }
