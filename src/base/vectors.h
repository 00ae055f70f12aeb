#pragma once

/// A point or direction in homogeneous coordinates; positions carry w = 1.
class C4Vector {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;
};

/// A position in the plane.
class C2Vector {
public:
    double x = 0.0;
    double y = 0.0;
};
