import { playEverywhere } from './suites/everywhere.mjs';

playEverywhere('chromium');
