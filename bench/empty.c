/* The smallest program: measures the time that the system needs to start and end one. */
int main(void) { return 0; }
