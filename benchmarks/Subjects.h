#pragma once

/// What is measured, one function a subject; each registers its actions.

void registerStart();
void registerStorage();
void registerViews();
void registerChapters();
void registerBills();
void registerFeatures();
void registerContents();
void registerRations();

/// Prints the most memory that the program takes with libraries of each size, beside an empty window.
void printMemory();
