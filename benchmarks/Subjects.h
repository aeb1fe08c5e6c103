#pragma once

/// What is measured, one function a subject; each registers its actions.

void registerStorage();
void registerViews();
void registerChapters();
void registerBills();
void registerFeatures();
void registerContents();
void registerRations();
