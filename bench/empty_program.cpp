// What any process costs before it does anything: the yardstick of process_ratio.
int main() {}
