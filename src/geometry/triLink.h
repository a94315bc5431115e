#pragma once

// Three corner indices of a triangle of neighbouring positions, as a layout builds it.
struct triLink {
    triLink(int first, int second, int third) : a(first), b(second), c(third) {}

    int a;
    int b;
    int c;
};
