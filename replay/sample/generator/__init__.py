"""Generates the sample recording from tables of channels, providers, values and events."""
