import { alone } from './suites/alone.mjs';
import { playEverywhere } from './suites/everywhere.mjs';

playEverywhere('chromium');
alone();
