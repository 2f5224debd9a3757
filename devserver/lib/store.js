// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { EventEmitter } from 'node:events';
import { existsSync, mkdirSync, readdirSync, rmSync } from 'node:fs';
import path from 'node:path';

import leveldbAdapter from 'pouchdb-adapter-leveldb';
import memoryAdapter from 'pouchdb-adapter-memory';
import PouchDB from 'pouchdb-core';
import mapreduce from 'pouchdb-mapreduce';

import { databaseMissing, HttpError } from './errors.js';

PouchDB.plugin(memoryAdapter).plugin(leveldbAdapter).plugin(mapreduce);

/** One open database. Counts its writes and emits "updated" and "gone" for the feeds. */
export class Database extends EventEmitter {
  constructor(name, pouch) {
    super();
    this.name = name;
    this.pouch = pouch;
    this.writes = 0;
    this.setMaxListeners(0);
    // A map function that throws skips its document; without a listener it would be printed.
    pouch.on('error', () => {});
  }

  /** Stores documents in one batch; results are in their order. */
  async write(docs, { newEdits = true } = {}) {
    const results = await this.pouch.bulkDocs(docs, { new_edits: newEdits });
    this.writes += 1;
    this.emit('updated');
    return results;
  }

  /** The winning revision of a document, or null if it is missing or deleted. */
  async find(id, options = {}) {
    try {
      return await this.pouch.get(id, options);
    } catch (error) {
      if (error.status === 404)
        return null;
      throw error;
    }
  }

  async updateSequence() {
    return (await this.pouch.info()).update_seq;
  }
}

/** All databases of the server, in memory or below one folder. */
export class Store {
  constructor(folder) {
    this.folder = folder;
    this.databases = new Map();
  }

  names() {
    if (!this.folder)
      return [...this.databases.keys()].sort();
    const onDisk = existsSync(this.folder) ? readdirSync(this.folder) : [];
    return onDisk.map(decodedName).filter(isValidName).sort();
  }

  has(name) {
    return this.databases.has(name) || (Boolean(this.folder) && existsSync(this.folderOf(name)));
  }

  open(name) {
    checkName(name);
    if (!this.has(name))
      throw databaseMissing();
    return this.databases.get(name) ?? this.attach(name);
  }

  create(name) {
    checkName(name);
    if (this.has(name)) {
      throw new HttpError(412, 'file_exists',
        'The database could not be created, the file already exists.');
    }
    return this.attach(name);
  }

  async remove(name) {
    const database = this.open(name);
    this.databases.delete(name);
    database.emit('gone');
    await database.pouch.destroy();
    if (this.folder)
      rmSync(this.folderOf(name), { recursive: true, force: true });
  }

  async close() {
    const open = [...this.databases.values()];
    this.databases.clear();
    for (const database of open) {
      database.emit('gone');
      await database.pouch.close();
    }
  }

  attach(name) {
    // Random revisions: deterministic ones would turn every attachment into a JSON text first.
    const options = { adapter: 'memory', deterministic_revs: false,
      view_update_changes_batch_size: 500 };
    if (this.folder) {
      mkdirSync(this.folderOf(name), { recursive: true });
      options.adapter = 'leveldb';
      options.prefix = this.folderOf(name) + path.sep;
    }
    const database = new Database(name, new PouchDB(encodeURIComponent(name), options));
    this.databases.set(name, database);
    return database;
  }

  folderOf(name) {
    return path.join(this.folder, encodeURIComponent(name));
  }
}

/** The name that a folder stands for; empty for one that is not ours. */
function decodedName(folder) {
  try {
    return decodeURIComponent(folder);
  } catch {
    return '';
  }
}

export function isValidName(name) {
  return /^[a-z][a-z0-9_$()+/-]*$/.test(name);
}

function checkName(name) {
  if (!isValidName(name)) {
    throw new HttpError(400, 'illegal_database_name',
      `Name: '${name}'. Only lowercase characters (a-z), digits (0-9), and any of the ` +
      'characters _, $, (, ), +, -, and / are allowed. Must begin with a letter.');
  }
}
